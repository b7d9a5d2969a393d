#include "cli/text_style.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <charconv>
#include <cstdlib>
#include <optional>
#include <string_view>

namespace command {

namespace {

std::string_view Environment(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

std::optional<std::size_t> ColumnsAskedFor() {
    const std::string_view text = Environment("COLUMNS");
    std::size_t columns = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), columns);
    const bool is_number = error == std::errc() && end == text.data() + text.size();
    return is_number && columns > 0 ? std::optional(columns) : std::nullopt;
}

std::optional<std::size_t> ColumnsOfTerminal(int descriptor) {
    winsize size{};
    const bool is_known = ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return is_known ? std::optional<std::size_t>(size.ws_col) : std::nullopt;
}

}  // namespace

outputs::TextStyle TextStyleOf(int descriptor) {
    outputs::TextStyle style;
    const auto asked_for = ColumnsAskedFor();
    style.columns = asked_for ? *asked_for : ColumnsOfTerminal(descriptor).value_or(style.columns);
    style.has_colour = isatty(descriptor) == 1 && Environment("NO_COLOR").empty();
    return style;
}

}  // namespace command
