// Texts from a host as a terminal may show them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace outputs {

/// The text on one line, with everything that could drive a terminal or is invisible there as an
/// escape (see common/text/visible_text.h).
std::string DisplayText(std::string_view text);

/// The same; a text that needs more columns (at least 1) than `most_columns` ends with an ellipsis
/// within them. No escape and no character is cut.
std::string DisplayText(std::string_view text, std::size_t most_columns);

/// Appends that to a text, and returns its columns.
std::size_t AppendDisplayText(std::string& shown, std::string_view text, std::size_t most_columns);

/// The same over lines that have at most so many columns each, broken at blanks where there are
/// any. What does not fit into the last line that is allowed ends with an ellipsis. At least one
/// line.
std::vector<std::string> DisplayLines(std::string_view text, std::size_t most_columns,
                                      std::size_t most_lines);

/// How many columns DisplayText(text) needs, counted up to `most_columns`. Makes no text.
std::size_t DisplayColumns(std::string_view text, std::size_t most_columns);

/// How many columns a terminal needs for a text that DisplayText made.
std::size_t DisplayWidth(std::string_view text);

}  // namespace outputs
