// How wide the columns of a table are on a terminal.
#pragma once

#include <cstddef>
#include <vector>

namespace outputs {

/// All in columns of the terminal.
struct ColumnLayout {
    std::size_t heading = 0;       ///< of the heading on one line
    std::size_t heading_word = 0;  ///< of its longest word: it may be broken at blanks, not cut
    std::size_t cells = 0;         ///< of the widest cell
    std::size_t least_cells = 0;   ///< fewer leave too little to read of a cell
    bool identifies = false;
    std::size_t width = 0;  ///< what the column gets
};

constexpr std::size_t kColumnGap = 2;

/// Gives each column its width, so that a row has at most `available` columns: first headings are
/// broken, then cells made narrower, the widest first, at last those that identify. Returns false
/// when not even the least widths fit.
bool FitColumns(std::vector<ColumnLayout>& columns, std::size_t available);

}  // namespace outputs
