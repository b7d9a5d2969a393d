// The text form of objects: their INSTANCE or CLASS element (DSP0201).
#pragma once

#include <string>

#include "Pegasus/Common/CIMObject.h"

namespace Pegasus::kalvex::detail {

/// One element a line, each line ended.
void AppendObjectText(std::string& out, const CIMConstObject& object);

/// The text with the five predefined entities, and control characters as references. Throws
/// Exception when `out` has grown past `most_bytes`.
void AppendXmlEscaped(std::string& out, std::string_view text,
                      std::size_t most_bytes = std::string::npos);

}  // namespace Pegasus::kalvex::detail
