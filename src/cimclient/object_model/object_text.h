// The text form of objects: their INSTANCE or CLASS element (DSP0201).
#pragma once

#include <string>

#include "object_model/value_body.h"

namespace Pegasus::kalvex::detail {

/// Appends the text of an array's element, or of the object that is the value; nothing for what is
/// unreadable.
void AppendElementText(std::string& out, const ValueBody& body, Uint32 index);

/// The text with the five predefined entities, and control characters as references. Throws
/// Exception when `out` has grown past `most_bytes`.
void AppendXmlEscaped(std::string& out, std::string_view text,
                      std::size_t most_bytes = std::string::npos);

}  // namespace Pegasus::kalvex::detail
