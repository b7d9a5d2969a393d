#include "inventory/section_status.h"

#include <algorithm>
#include <string_view>

namespace inventory {

using Zentar::Failure;
using Zentar::FailureKind;

namespace {

using Failures = std::vector<const Failure*>;
using Sections = std::vector<SectionResult>;

bool IsAboutValue(const Failure& failure) { return failure.kind == FailureKind::kValueUnreadable; }

bool IsAboutAssociation(const Failure& failure) { return !failure.association.empty(); }

/// Connecting for its own sake, not because of a request.
bool IsAboutHost(const Failure& failure) {
    return failure.class_name.empty() && !IsAboutAssociation(failure);
}

bool IsOfClass(const SectionResult& section, std::string_view class_name) {
    return class_name == section.kind().class_name;
}

/// Whether the class of a list could not be asked for. An operation that reads one list may ask for
/// more than one class.
bool IsAboutList(const SectionResult& section, const Sections& sections, const Failure& failure) {
    return !IsAboutValue(failure) && !IsAboutAssociation(failure) && !IsAboutHost(failure) &&
           (sections.size() == 1 || IsOfClass(section, failure.class_name));
}

/// The place of the field that associated objects fill; the number of fields without one.
std::size_t AssociatedField(const schema::RecordKind& kind) {
    const auto fields = kind.fields();
    const auto found =
        std::ranges::find(fields, schema::Source::kAssociated, &schema::Field::source);
    return static_cast<std::size_t>(found - fields.begin());
}

bool HasAssociatedField(const schema::RecordKind& kind) {
    return AssociatedField(kind) < kind.fields().size();
}

bool LacksAssociated(const SectionResult& section) {
    if (!HasAssociatedField(section.kind())) {
        return false;
    }
    const std::size_t field = AssociatedField(section.kind());
    for (std::size_t i = 0; i < section.records->size(); ++i) {
        if (IsNull(section.records->At(i, field))) {
            return true;
        }
    }
    return false;
}

/// An instance may be of a class that is derived from a list's.
bool IsOfOther(const SectionResult& section, const Sections& sections,
               std::string_view class_name) {
    return !IsOfClass(section, class_name) &&
           std::ranges::any_of(sections, [class_name](const SectionResult& other) {
               return IsOfClass(other, class_name);
           });
}

/// The class of the instance that a failure of less than the list is about.
const std::string& InstanceClass(const Failure& failure) {
    return IsAboutAssociation(failure) ? failure.source_class : failure.class_name;
}

/// Whether a record may be less than it is on the host. Which one's associated object could not be
/// asked for or read is not known: it is one without, where the section `lacks_associated`.
bool MayCostAValue(const SectionResult& section, const Sections& sections, bool lacks_associated,
                   const Failure& failure) {
    const bool is_of_other = IsOfOther(section, sections, InstanceClass(failure));
    if (IsAboutAssociation(failure)) {
        return lacks_associated && !is_of_other;
    }
    return IsAboutValue(failure) && (!is_of_other || lacks_associated);
}

template <class Matches>
Failures Those(const std::vector<Failure>& failures, Matches matches) {
    Failures found;
    for (const Failure& failure : failures) {
        if (matches(failure)) {
            found.push_back(&failure);
        }
    }
    return found;
}

bool IsEmpty(const SectionResult& section) {
    return section.records->size() == 0 || section.kind().shape == schema::Shape::kOneRecord;
}

bool SaysUnavailable(const Failure* failure) {
    return failure->kind == FailureKind::kUnknownNamespace ||
           failure->kind == FailureKind::kUnknownClass;
}

bool WasAsked(const Failure* failure) { return failure->was_asked; }

/// Of a section of which nothing was read.
Status StatusWithoutRecords(const Failures& own, const std::vector<Failure>& all) {
    const bool could_connect = std::ranges::none_of(
        all, [](const Failure& failure) { return IsAboutHost(failure) && failure.was_asked; });
    if (!own.empty() && could_connect && std::ranges::none_of(own, WasAsked)) {
        return Status::kSkipped;
    }
    return !own.empty() && std::ranges::all_of(own, SaysUnavailable) ? Status::kUnavailable
                                                                     : Status::kFailed;
}

void Mark(SectionResult& section, Status status, const Failures& reasons) {
    section.status = status;
    section.lacks_only_unavailable = std::ranges::all_of(reasons, SaysUnavailable);
    if (!reasons.empty()) {
        section.cause = reasons.front()->kind;
    }
}

void Judge(int result, const std::vector<Failure>& failures, const Sections& all,
           SectionResult& section) {
    const Failures own =
        Those(failures, [&](const Failure& failure) { return IsAboutList(section, all, failure); });
    const bool is_one_of_several = all.size() > 1;
    if (result != 0 || (is_one_of_several && !own.empty())) {
        const Status status =
            IsEmpty(section) ? StatusWithoutRecords(own, failures) : Status::kPartial;
        Mark(section, status, own.empty() && !failures.empty() ? Failures{&failures.front()} : own);
        section.lacks_only_unavailable = section.lacks_only_unavailable && !own.empty();
        return;
    }
    // Asked once: there may be as many failures as records.
    const bool lacks_associated = LacksAssociated(section);
    Failures lesser = Those(failures, [&](const Failure& failure) {
        return MayCostAValue(section, all, lacks_associated, failure);
    });
    lesser.insert(lesser.begin(), own.begin(), own.end());
    if (!lesser.empty()) {
        Mark(section, Status::kPartial, lesser);
    }
}

}  // namespace

void JudgeSections(int result, const std::vector<Failure>& failures,
                   std::vector<SectionResult>& sections) {
    for (SectionResult& section : sections) {
        Judge(result, failures, sections, section);
    }
}

std::string SectionOf(const Failure& failure, const std::vector<SectionResult>& sections) {
    const std::string& class_name = InstanceClass(failure);
    for (const SectionResult& section : sections) {
        if (IsOfClass(section, class_name)) {
            return section.kind().name;
        }
    }
    return sections.front().kind().name;
}

}  // namespace inventory
