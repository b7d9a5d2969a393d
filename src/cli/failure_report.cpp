#include "cli/failure_report.h"

#include <algorithm>
#include <ostream>

#include "inventory/failure_meanings.h"
#include "outputs/text/display_text.h"

namespace command {

using outputs::DisplayText;

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
std::string KeyOf(Zentar::FailureKind kind, const std::string& description) {
    const bool ends_all =
        kind == Zentar::FailureKind::kCancelled || kind == Zentar::FailureKind::kDeadline;
    return ends_all ? WordOf(kind) : description;
}

}  // namespace

void FailureReport::Add(const std::string& section, const std::vector<Zentar::Failure>& failures) {
    for (const Zentar::Failure& failure : failures) {
        Add(section, failure.kind, inventory::DescribeFailure(failure));
    }
}

void FailureReport::Add(const std::string& connecting, const inventory::Document& document) {
    for (const inventory::DocumentFailure& failure : document.failures) {
        Add(failure.section.empty() ? connecting : failure.section, failure.kind, failure.message);
    }
    dropped_ += document.dropped_failures;
}

void FailureReport::Add(const std::string& section, Zentar::FailureKind kind,
                        const std::string& description) {
    const auto [known, is_new] = places_.try_emplace(KeyOf(kind, description), entries_.size());
    if (is_new) {
        entries_.push_back({description, inventory::MeaningOf(kind).advice, {}});
    }
    std::vector<std::string>& sections = entries_[known->second].sections;
    if (std::ranges::count(sections, section) == 0) {
        sections.push_back(section);
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
