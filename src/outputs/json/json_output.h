// A document as JSON, the form that programs read.
#pragma once

#include <iosfwd>

#include "inventory/document.h"
#include "outputs/json/json_writer.h"

namespace outputs {

/// The name and version of the form.
inline constexpr const char* kJsonSchemaName = "kalvex/1";

/// Writes the document, and no line break after it. Takes hardly any memory.
void WriteJson(const inventory::Document& document, std::ostream& out, JsonLayout layout);

}  // namespace outputs
