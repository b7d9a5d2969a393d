// Objects that travel as text inside a value.
#pragma once

#include <optional>
#include <string_view>

#include "Pegasus/Common/CIMObject.h"

namespace cimclient {

/// The object of an INSTANCE or CLASS element; nothing when the text is something else.
std::optional<Pegasus::CIMObject> ReadEmbeddedObject(std::string_view text);

}  // namespace cimclient
