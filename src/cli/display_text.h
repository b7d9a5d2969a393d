// Texts from a host as a terminal may show them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace command {

/// The text with everything that could drive a terminal made visible: control characters, line
/// breaks and separators and invisible format characters as \n, \t, \xNN or \u{NNNN}, bytes that
/// are not UTF-8 as \xNN. Joiners, which spelling needs, stay.
std::string DisplayText(std::string_view text);

/// How many columns a terminal needs for a text that DisplayText made.
std::size_t DisplayWidth(std::string_view text);

}  // namespace command
