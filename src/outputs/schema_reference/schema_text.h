// All sections and their fields, for people.
#pragma once

#include <iosfwd>

namespace outputs {

void WriteSchemaText(std::ostream& out);

}  // namespace outputs
