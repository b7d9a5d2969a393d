// Reads one section and finds out what of it failed, and why.
#pragma once

#include <vector>

#include "cli/failure_log.h"
#include "cli/sections.h"

namespace command {

enum class Outcome {
    kRead,
    kReadInPart,  ///< some of it failed
    kFailed,      ///< nothing was read
};

struct SectionReading {
    SectionContent content;  ///< its tables marked with their failures, its result 1 with any
    std::vector<Failure> failures;
    Outcome outcome = Outcome::kRead;
};

SectionReading ReadSection(const Section& section, Zentar::Agentless::Kalvex& host,
                           FailureLog& log);

/// The reading of a section that is not asked for any more, after what another one met.
SectionReading SkipSection(const Section& section, const std::vector<Failure>& failures);

}  // namespace command
