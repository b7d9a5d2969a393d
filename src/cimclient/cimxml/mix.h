// Places for texts in the caches of a reader.
#pragma once

#include <string_view>

namespace cimclient {

/// Distinguishes the texts of one reply, for which their lengths and a few letters are enough. The
/// text must not be empty.
inline std::size_t Mix(std::string_view text) {
    const auto letter = [text](std::size_t at) {
        return static_cast<std::size_t>(static_cast<unsigned char>(text[at]));
    };
    return text.size() * 7 + letter(0) * 3 + letter(text.size() / 2) * 5 + letter(text.size() - 1);
}

}  // namespace cimclient
