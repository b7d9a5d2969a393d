// Numbers at the start of a CIM text.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace schema {

/// The signed 32-bit decimal number that the text begins with, as stream extraction reads it:
/// blanks before it are skipped, it ends at the first other character, and a number beyond 32 bits
/// is the nearest one that fits. Nothing when the text does not begin with a number.
std::optional<std::int32_t> LeadingNumber(std::string_view text);

}  // namespace schema
