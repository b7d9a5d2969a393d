// Reads the text form of object paths.
#pragma once

#include <string_view>

#include "Pegasus/Common/CIMObjectPath.h"

namespace Pegasus::kalvex::detail {

/// Throws MalformedObjectNameException with the reason.
CIMObjectPath ParseObjectPath(std::string_view text);

[[noreturn]] void ThrowMalformedPath(std::string_view text, std::string_view reason);

}  // namespace Pegasus::kalvex::detail
