// Date-times of CIM (DSP0004): time stamps and intervals in the form of 25 characters.
#pragma once

#include <string_view>

#include "Pegasus/Common/Config.h"

namespace Pegasus::kalvex::detail {

constexpr std::string_view kZeroInterval = "00000000000000.000000:000";

/// Of the form, wildcards included, and with every field in its range.
bool IsDateTime(std::string_view text);

}  // namespace Pegasus::kalvex::detail
