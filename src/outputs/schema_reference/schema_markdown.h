// docs/fields.md: all sections and their fields, with where each comes from.
#pragma once

#include <iosfwd>

namespace outputs {

void WriteSchemaMarkdown(std::ostream& out);

}  // namespace outputs
