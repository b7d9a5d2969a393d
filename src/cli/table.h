// What a section of the inventory holds, ready for any printer: columns and cells, whatever the
// record type was.
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace command {

using Cell = std::variant<std::string, std::uint64_t, std::int32_t>;

struct Column {
    const char* key;      ///< the record's field name, letter for letter
    const char* heading;  ///< for people
};

enum class Shape { kOneRecord, kList };

/// The fixed part of a table.
struct TableHead {
    const char* key;    ///< name within the section's JSON object
    const char* title;  ///< for people
    Shape shape = Shape::kList;
    /// The class that the list stands or falls with, where the section's result does not tell.
    const char* class_name = "";
};

struct Table {
    TableHead head;
    std::vector<Column> columns;
    std::vector<std::vector<Cell>> rows;  ///< one row when it is one record
    bool failed = false;                  ///< could not be read but for the rows here
    std::string failure;                  ///< why, for people
};

}  // namespace command
