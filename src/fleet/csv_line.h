// One line of a CSV file (RFC 4180) in its cells.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fleet {

/// Blanks around a cell that is not quoted are dropped. Nothing for a quoted cell without an end,
/// or with more after it.
std::optional<std::vector<std::string>> CellsOf(std::string_view line);

}  // namespace fleet
