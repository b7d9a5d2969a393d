// Which sections of the inventory the command line names.
#pragma once

#include <string>
#include <vector>

#include "inventory/sections.h"

namespace command {

/// The named sections in reading order; all of them when no name is given. Throws UsageError for a
/// name that is unknown or given twice.
std::vector<inventory::Section> ChosenSections(const std::vector<std::string>& names);

}  // namespace command
