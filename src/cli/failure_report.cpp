#include "cli/failure_report.h"

#include <algorithm>
#include <ostream>

#include "cli/display_text.h"
#include "cli/failure_explanation.h"

namespace command {

std::string DescribeFailure(const Failure& failure) {
    const std::string reason =
        failure.reason.empty() ? "no reason given for " + failure.class_name : failure.reason;
    return std::string(Explain(failure.reason).meaning) + " (" + DisplayText(reason) + ")";
}

void FailureReport::Add(const std::string& section, const std::vector<Failure>& failures) {
    for (const Failure& failure : failures) {
        const std::string description = DescribeFailure(failure);
        const auto known = std::ranges::find(entries_, description, [](const Entry& entry) {
            return DescribeFailure(entry.failure);
        });
        if (known == entries_.end()) {
            entries_.push_back({failure, section});
        } else if (!(", " + known->sections).ends_with(", " + section)) {
            known->sections += ", " + section;
        }
    }
}

void FailureReport::Write(std::ostream& out) const {
    for (const Entry& entry : entries_) {
        out << "kalvex: " << entry.sections << ": " << DescribeFailure(entry.failure) << "; "
            << Explain(entry.failure.reason).remedy << '\n';
    }
}

}  // namespace command
