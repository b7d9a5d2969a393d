// The beginning of a text that may be too long.
#pragma once

#include <cstddef>
#include <string_view>

namespace Zentar {

/// At most so many bytes of a text in UTF-8, without half a character at the end.
inline std::string_view Beginning(std::string_view text, std::size_t most) {
    if (text.size() <= most) {
        return text;
    }
    while (most > 0 && (static_cast<unsigned char>(text[most]) & 0xC0U) == 0x80U) {
        --most;
    }
    return text.substr(0, most);
}

}  // namespace Zentar
