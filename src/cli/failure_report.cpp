#include "cli/failure_report.h"

#include <algorithm>
#include <ostream>

#include "cli/display_text.h"
#include "inventory/failure_meanings.h"

namespace command {

namespace {

/// More would hide from people what they have to read.
constexpr std::size_t kMostReported = 20;

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
        const auto [known, is_new] = places_.try_emplace(key, entries_.size());
        if (is_new) {
            entries_.push_back({inventory::DescribeFailure(failure),
                                inventory::MeaningOf(failure.kind).advice,
                                {}});
        }
        std::vector<std::string>& sections = entries_[known->second].sections;
        if (std::ranges::count(sections, section) == 0) {
            sections.push_back(section);
        }
    }
}

void FailureReport::Write(std::ostream& out) const {
    for (std::size_t i = 0; i < std::min(entries_.size(), kMostReported); ++i) {
        const Entry& entry = entries_[i];
        out << "kalvex: " << DisplayText(Joined(entry.sections)) << ": "
            << DisplayText(entry.description) << "; " << entry.advice << '\n';
    }
    if (entries_.size() > kMostReported) {
        const std::size_t more = entries_.size() - kMostReported;
        out << "kalvex: and " << more << " more failure" << (more == 1 ? "" : "s")
            << "; --format json lists each\n";
    }
    if (dropped_ > 0) {
        out << "kalvex: " << dropped_ << " more failures were too many to be kept\n";
    }
    out.flush();
}

}  // namespace command
