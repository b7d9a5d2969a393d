// Numbers in texts.
#pragma once

#include <charconv>
#include <optional>
#include <string_view>

namespace Zentar {

/// The number that the whole text is, as std::from_chars reads it; nothing for any other text, and
/// for a number beyond the type.
template <class Number, class... Format>
std::optional<Number> NumberOf(std::string_view text, Format... format) {
    Number number{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number, format...);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

}  // namespace Zentar
