// Texts in UTF-8, and what passes for them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace Zentar {

/// The smallest part of a text that is shown on its own.
struct TextUnit {
    std::string_view bytes;
    std::int32_t code;  ///< the character; negative for a byte that is not UTF-8
};

/// The first unit of a text that is not empty.
TextUnit FirstUnit(std::string_view text);

/// Position of the first byte that belongs to no well-formed sequence, or npos.
std::size_t FirstInvalidUtf8(std::string_view text);

/// The text with U+FFFD in place of each byte that belongs to no well-formed sequence.
std::string RepairedUtf8(std::string_view text);
std::size_t RepairedUtf8Size(std::string_view text);

/// `code` is a character: no surrogate, and at most 0x10FFFF.
void AppendUtf8(std::string& out, char32_t code);

}  // namespace Zentar
