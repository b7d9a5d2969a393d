// What the failures of a section mean for its tables.
#pragma once

#include <vector>

#include "inventory/sections.h"

namespace inventory {

/// Sets the status and cause of each table, from the facade's result and the failures met.
void JudgeTables(SectionContent& content, const std::vector<Zentar::Failure>& failures);

/// Of the section as a whole.
Status StatusOf(const std::vector<Table>& tables);

}  // namespace inventory
