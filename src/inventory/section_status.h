// What the failures of a section's reading mean for its lists.
#pragma once

#include <string>
#include <vector>

#include "inventory/document.h"

namespace inventory {

/// Sets status and cause of what was read by one operation of the facade, which gave `result` and
/// met the failures.
void JudgeSections(int result, const std::vector<Zentar::Failure>& failures,
                   std::vector<SectionResult>& sections);

/// The name of the one of them that the failure is about, or else of the first.
std::string SectionOf(const Zentar::Failure& failure, const std::vector<SectionResult>& sections);

}  // namespace inventory
