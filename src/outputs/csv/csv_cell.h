// One cell of a CSV file (RFC 4180).
#pragma once

#include <string>
#include <string_view>

namespace outputs {

/// Appends the text as a cell, in quotes where it needs them. It is UTF-8; a byte that is not
/// becomes U+FFFD. A text that a spreadsheet would run as a formula (it begins with =, +, -, @, tab
/// or carriage return, and is not a negative integer) gets an apostrophe before it.
void AppendCsvCell(std::string& csv, std::string_view text);

}  // namespace outputs
