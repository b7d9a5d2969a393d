// The typed value of one field of one record.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "schema/date_time.h"

namespace schema {

/// What a field's value is, for programs.
enum class Type {
    kText,
    kInteger,  ///< signed, 64 bits
    kBoolean,
    kDateTime,
    kTextList,
    kIntegerList,
};

/// A type's word in references: "text", "integer", ...
const char* WordOf(Type type);

using TextList = std::vector<std::string_view>;
using IntegerList = std::vector<std::int64_t>;

/// Nothing (std::monostate) when the host did not say. Texts are those of the record, which must
/// outlive the cell.
using Cell = std::variant<std::monostate, std::string_view, std::int64_t, bool, DateTime, TextList,
                          IntegerList>;

/// The value that a record's text stands for; the text itself where it does not fit the type.
Cell CellOf(Type type, std::string_view text);

/// The record's text for a value; CellOf gives the same value for it again.
std::string TextOf(const Cell& cell);

inline bool IsNull(const Cell& cell) { return std::holds_alternative<std::monostate>(cell); }

}  // namespace schema
