// The JSON form of a document as a JSON Schema (draft 2020-12).
#pragma once

#include <iosfwd>

namespace outputs {

/// Writes it, and no line break after it.
void WriteJsonSchema(std::ostream& out);

}  // namespace outputs
