// Which sections of the inventory the command line names.
#pragma once

#include <string>
#include <vector>

#include "inventory/sections.h"

namespace command {

/// All sections, as a name.
inline constexpr const char* kAllSections = "all";

/// The named sections in reading order; all of them when no name is given, and for "all". Each word
/// may hold several names with commas between. Throws UsageError for a name that is unknown or
/// given twice.
std::vector<inventory::Section> ChosenSections(const std::vector<std::string>& words);

/// Whether the word holds names of sections only.
bool NamesSections(const std::string& word);

}  // namespace command
