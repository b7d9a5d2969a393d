// Conversions between UTF-8 and UTF-16.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Pegasus/Common/Char16.h"

namespace Pegasus::kalvex::detail {

/// Length of the well-formed sequence at the start of the text, or 0.
std::size_t Utf8SequenceLength(std::string_view text);

/// Position of the first byte that belongs to no well-formed sequence, or npos.
std::size_t FirstInvalidUtf8(std::string_view text);

/// The text with U+FFFD in place of each byte that belongs to no well-formed sequence.
std::string RepairedUtf8(std::string_view text);
std::size_t RepairedUtf8Size(std::string_view text);

/// UTF-16 units of well-formed UTF-8.
std::size_t Utf16Length(std::string_view utf8);
std::vector<Char16> ToUtf16(std::string_view utf8);

/// Lone surrogates vanish.
std::string ToUtf8(const Char16* units, std::size_t count);

void AppendUtf8(std::string& out, char32_t code_point);

}  // namespace Pegasus::kalvex::detail
