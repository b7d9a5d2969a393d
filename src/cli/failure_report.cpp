#include "cli/failure_report.h"

#include <algorithm>
#include <ostream>

#include "cli/display_text.h"
#include "inventory/failure_meanings.h"

namespace command {

namespace {

std::string Joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) {
        text += (text.empty() ? "" : ", ") + name;
    }
    return text;
}

/// Failures of the same key are one. What ends all reading does so once, whatever was under way.
std::string KeyOf(const Zentar::Failure& failure) {
    const bool ends_all = failure.kind == Zentar::FailureKind::kCancelled ||
                          failure.kind == Zentar::FailureKind::kDeadline;
    return ends_all ? WordOf(failure.kind) : inventory::DescribeFailure(failure);
}

}  // namespace

void FailureReport::Add(const std::string& section, const std::vector<Zentar::Failure>& failures) {
    for (const Zentar::Failure& failure : failures) {
        const std::string key = KeyOf(failure);
        auto known = std::ranges::find(entries_, key, &Entry::key);
        if (known == entries_.end()) {
            known = entries_.insert(known, {key,
                                            inventory::DescribeFailure(failure),
                                            inventory::MeaningOf(failure.kind).advice,
                                            {}});
        }
        if (std::ranges::count(known->sections, section) == 0) {
            known->sections.push_back(section);
        }
    }
}

void FailureReport::Write(std::ostream& out) const {
    for (const Entry& entry : entries_) {
        out << "kalvex: " << DisplayText(Joined(entry.sections)) << ": "
            << DisplayText(entry.description) << "; " << entry.advice << '\n';
    }
    if (dropped_ > 0) {
        out << "kalvex: " << dropped_ << " more failures were too many to be kept\n";
    }
    out.flush();
}

}  // namespace command
