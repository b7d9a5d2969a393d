// How wide text output may be, and whether it has colour.
#pragma once

#include "outputs/text/text_output.h"

namespace command {

/// For text on this descriptor. The columns are those of COLUMNS, when it is a positive number,
/// else of the terminal, else 100. Colour is for a terminal only, and only without NO_COLOR.
outputs::TextStyle TextStyleOf(int descriptor);

}  // namespace command
