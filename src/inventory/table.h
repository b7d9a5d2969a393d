// What a section of the inventory holds, ready for any printer: columns and cells, whatever the
// record type was.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "common/records/failure.h"

namespace inventory {

using Cell = std::variant<std::string, std::uint64_t, std::int32_t>;

struct Column {
    const char* key;      ///< the record's field name, letter for letter
    const char* heading;  ///< for people
};

enum class Shape { kOneRecord, kList };

/// How reading went.
enum class Status {
    kOk,
    kPartial,      ///< some of it could not be read
    kUnavailable,  ///< the host answered that it has no such namespace or class
    kFailed,
    kSkipped,  ///< not asked for, for a reason that is among the failures
};

/// The fixed part of a table.
struct TableHead {
    const char* key;    ///< name within the section's JSON object
    const char* title;  ///< for people
    Shape shape = Shape::kList;
    /// The class that the list stands or falls with, where the section's result does not tell.
    const char* class_name = "";
    /// The column that objects associated with the row's fill; empty when none is.
    const char* associated_column = "";
};

struct Table {
    TableHead head;
    std::vector<Column> columns;
    std::vector<std::vector<Cell>> rows;  ///< one row when it is one record
    Status status = Status::kOk;
    /// Why it is not whole; nothing when it is, or when memory ran out.
    std::optional<Zentar::FailureKind> cause{};
};

}  // namespace inventory
