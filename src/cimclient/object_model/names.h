// What the names of CIM are made of (DSP0004).
#pragma once

#include <string_view>

#include "Pegasus/Common/Config.h"

namespace Pegasus::kalvex::detail {

/// Letters, digits and underscores, with no digit in front.
bool IsLegalName(std::string_view name);

/// Legal names joined by "/".
bool IsLegalNamespace(std::string_view name);

}  // namespace Pegasus::kalvex::detail
