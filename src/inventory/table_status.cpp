#include "inventory/table_status.h"

#include <algorithm>
#include <string_view>

namespace inventory {

using Zentar::Failure;
using Zentar::FailureKind;

namespace {

using Failures = std::vector<const Failure*>;

bool IsAboutValue(const Failure& failure) { return failure.kind == FailureKind::kValueUnreadable; }

bool IsAboutAssociation(const Failure& failure) { return !failure.association.empty(); }

/// Connecting for its own sake, not because of a request.
bool IsAboutHost(const Failure& failure) {
    return failure.class_name.empty() && !IsAboutAssociation(failure);
}

/// Whether a list's own class could not be asked for.
bool IsAboutList(const TableHead& head, const Failure& failure) {
    return !IsAboutValue(failure) && !IsAboutAssociation(failure) && !IsAboutHost(failure) &&
           (*head.class_name == '\0' || failure.class_name == head.class_name);
}

bool LacksAssociated(const Table& table) {
    const auto column = std::ranges::find_if(table.columns, [&](const Column& candidate) {
        return std::string_view(candidate.key) == table.head.associated_column;
    });
    if (column == table.columns.end()) {
        return false;
    }
    const auto place = static_cast<std::size_t>(column - table.columns.begin());
    return std::ranges::any_of(table.rows, [place](const std::vector<Cell>& row) {
        return std::get<std::string>(row[place]).empty();
    });
}

/// An instance may be of a class that is derived from a list's.
bool IsOfOtherTable(const Table& table, const std::vector<Table>& tables, const Failure& failure) {
    return failure.class_name != table.head.class_name &&
           std::ranges::any_of(tables, [&failure](const Table& other) {
               return failure.class_name == other.head.class_name;
           });
}

/// Whether a row of the table may be less than it is on the host. Which row's associated object
/// could not be asked for is not known: it is one without, where the table `lacks_associated`.
bool MayCostAValue(const Table& table, const std::vector<Table>& tables, bool lacks_associated,
                   const Failure& failure) {
    if (IsAboutValue(failure) && !IsOfOtherTable(table, tables, failure)) {
        return true;
    }
    return (IsAboutValue(failure) || IsAboutAssociation(failure)) && lacks_associated;
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

bool IsEmpty(const Table& table) {
    return table.rows.empty() || table.head.shape == Shape::kOneRecord;
}

bool SaysUnavailable(const Failure* failure) {
    return failure->kind == FailureKind::kUnknownNamespace ||
           failure->kind == FailureKind::kUnknownClass;
}

bool WasAsked(const Failure* failure) { return failure->was_asked; }

/// Of a table of which nothing was read.
Status StatusWithoutRows(const Failures& own, const std::vector<Failure>& all) {
    const bool could_connect = std::ranges::none_of(
        all, [](const Failure& failure) { return IsAboutHost(failure) && failure.was_asked; });
    if (!own.empty() && could_connect && std::ranges::none_of(own, WasAsked)) {
        return Status::kSkipped;
    }
    return !own.empty() && std::ranges::all_of(own, SaysUnavailable) ? Status::kUnavailable
                                                                     : Status::kFailed;
}

void JudgeFailed(Table& table, const Failures& own, const std::vector<Failure>& all) {
    table.status = IsEmpty(table) ? StatusWithoutRows(own, all) : Status::kPartial;
    const Failure* const cause = !own.empty() ? own.front() : all.empty() ? nullptr : &all.front();
    if (cause != nullptr) {
        table.cause = cause->kind;
    }
}

void Judge(Table& table, const SectionContent& content, const std::vector<Failure>& failures) {
    const Failures own =
        Those(failures, [&](const Failure& failure) { return IsAboutList(table.head, failure); });
    const bool is_list_of_several = *table.head.class_name != '\0';
    if (content.result != 0 || (is_list_of_several && !own.empty())) {
        JudgeFailed(table, own, failures);
        return;
    }
    // Asked once: there may be as many failures as rows.
    const bool lacks_associated = LacksAssociated(table);
    Failures lesser = Those(failures, [&](const Failure& failure) {
        return MayCostAValue(table, content.tables, lacks_associated, failure);
    });
    lesser.insert(lesser.begin(), own.begin(), own.end());
    if (!lesser.empty()) {
        table.status = Status::kPartial;
        table.cause = lesser.front()->kind;
    }
}

bool WasRead(const Table& table) {
    return table.status == Status::kOk || table.status == Status::kPartial;
}

}  // namespace

void JudgeTables(SectionContent& content, const std::vector<Failure>& failures) {
    for (Table& table : content.tables) {
        Judge(table, content, failures);
    }
}

Status StatusOf(const std::vector<Table>& tables) {
    const auto have = [&tables](Status status) {
        return std::ranges::count(tables, status, &Table::status) > 0;
    };
    const bool are_alike = std::ranges::all_of(
        tables, [&tables](const Table& table) { return table.status == tables.front().status; });
    if (are_alike) {
        return tables.empty() ? Status::kOk : tables.front().status;
    }
    if (std::ranges::any_of(tables, WasRead)) {
        return Status::kPartial;
    }
    return have(Status::kFailed) ? Status::kFailed : Status::kUnavailable;
}

}  // namespace inventory
