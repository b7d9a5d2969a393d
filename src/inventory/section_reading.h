// Reads one section and finds out what of it failed, and why.
#pragma once

#include <cstdint>
#include <vector>

#include "common/records/failure.h"
#include "inventory/sections.h"

namespace inventory {

struct SectionReading {
    const char* name;
    SectionContent content;  ///< its tables with their statuses; its result 1 when one failed
    std::vector<Zentar::Failure> failures;
    std::uint64_t dropped_failures = 0;  ///< older ones that were too many
    Status status = Status::kOk;

    bool HasContent() const { return status == Status::kOk || status == Status::kPartial; }
};

/// Passes std::bad_alloc on.
SectionReading ReadSection(const Section& section, Zentar::Agentless::Kalvex& host);

/// The reading of a section that failed for a reason of this process.
SectionReading FailedSection(const Section& section);

}  // namespace inventory
