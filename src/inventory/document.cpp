#include "inventory/document.h"

#include <algorithm>

namespace inventory {

namespace {

bool HasFailed(const SectionResult& section, bool is_strict) {
    if (section.status == Status::kOk) {
        return false;
    }
    return is_strict || !(section.status == Status::kUnavailable || section.lacks_only_unavailable);
}

}  // namespace

const char* WordOf(Status status) {
    constexpr const char* kWords[] = {"ok", "partial", "unavailable", "failed", "skipped"};
    return kWords[static_cast<std::size_t>(status)];
}

const SectionResult* Document::Find(const schema::RecordKind& kind) const {
    const auto found = std::ranges::find_if(
        sections, [&kind](const SectionResult& section) { return &section.kind() == &kind; });
    return found == sections.end() ? nullptr : &*found;
}

Status StatusOfWhole(const std::vector<SectionResult>& sections, bool is_strict) {
    const bool has_failed = std::ranges::any_of(
        sections, [is_strict](const SectionResult& s) { return HasFailed(s, is_strict); });
    if (!has_failed) {
        return Status::kOk;
    }
    return std::ranges::any_of(sections, &SectionResult::WasRead) ? Status::kPartial
                                                                  : Status::kFailed;
}

}  // namespace inventory
