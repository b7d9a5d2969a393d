// The text of a cell for people, before it is made fit for a terminal.
#pragma once

#include <string>
#include <string_view>

#include "schema/cell.h"

namespace outputs {

class CellText {
public:
    /// Empty when the host did not say. Valid until the next call, and while the cell and the
    /// record are.
    std::string_view Of(const schema::Cell& cell);

private:
    std::string made_;  ///< kept, so that not every cell allocates
};

}  // namespace outputs
