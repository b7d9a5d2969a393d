// Tells on standard error why something could not be read.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "cli/failure_log.h"

namespace command {

/// "MEANING (REASON)", fit for a terminal.
std::string DescribeFailure(const Failure& failure);

/// Collects failures by section and tells each distinct one once.
class FailureReport {
public:
    /// Notes why a section failed, or was read only in part.
    void Add(const std::string& section, const std::vector<Failure>& failures);

    /// One line per distinct failure: the sections it struck, what happened, what to try.
    void Write(std::ostream& out) const;

private:
    struct Entry {
        Failure failure;
        std::string sections;
    };
    std::vector<Entry> entries_;
};

}  // namespace command
