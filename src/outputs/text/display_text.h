// Texts from a host as a terminal may show them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace outputs {

/// The text on one line, with everything that could drive a terminal or is invisible there as an
/// escape (see common/text/visible_text.h).
std::string DisplayText(std::string_view text);

/// The same; a text that needs more columns (at least 1) than `most_columns` ends with an ellipsis
/// within them. No escape and no character is cut.
std::string DisplayText(std::string_view text, std::size_t most_columns);

/// How many columns a terminal needs for a text that DisplayText made.
std::size_t DisplayWidth(std::string_view text);

}  // namespace outputs
