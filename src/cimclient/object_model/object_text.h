// The text form of objects: their INSTANCE or CLASS element (DSP0201).
#pragma once

#include <string>

#include "Pegasus/Common/CIMObject.h"

namespace Pegasus::kalvex::detail {

/// One element a line, each line ended.
void AppendObjectText(std::string& out, const CIMConstObject& object);

/// The text with the five predefined entities, and control characters as references. Throws
/// Exception when `out` has grown past what the text of an object may have.
void AppendXmlEscaped(std::string& out, std::string_view text);

}  // namespace Pegasus::kalvex::detail
