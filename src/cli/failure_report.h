// Says on standard error why something could not be read.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "common/records/failure.h"

namespace command {

/// Collects failures by section and reports each distinct one once.
class FailureReport {
public:
    /// Notes why a section failed, was read only in part, or was not asked for.
    void Add(const std::string& section, const std::vector<Zentar::Failure>& failures);

    /// Notes that some were too many to be kept.
    void AddDropped(std::uint64_t count) { dropped_ += count; }

    /// One line per distinct failure: the sections it struck, what happened, what to try.
    void Write(std::ostream& out) const;

private:
    struct Entry {
        std::string key;
        std::string description;
        const char* advice;
        std::vector<std::string> sections;
    };
    std::vector<Entry> entries_;
    std::uint64_t dropped_ = 0;
};

}  // namespace command
