// The text form of values, and that of objects: their INSTANCE or CLASS element (DSP0201).
#pragma once

#include "Pegasus/Common/CIMValue.h"

namespace Pegasus::kalvex::detail {

/// The text of an array, or of an embedded object; a blank after each element of an array, and
/// nothing for what is unreadable.
String TextOfContent(const CIMValue& value);
/// Its bytes, without making it. Takes time in proportion to what the value holds, not to its text,
/// in which a quotation mark grows with every level of embedding.
std::size_t BytesOfContent(const CIMValue& value);

}  // namespace Pegasus::kalvex::detail
