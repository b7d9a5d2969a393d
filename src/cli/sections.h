// The sections of an inventory: their names, their order, and how each is read.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "cli/table.h"

namespace Zentar::Agentless {
class Kalvex;
}

namespace command {

/// The outcome of the facade's operation, and what it read: all of it, or up to the failure.
struct SectionContent {
    int result = 0;
    std::vector<Table> tables;
};

struct Section {
    const char* name;
    /// Without a host it asks nobody, and gives what a failure gives.
    SectionContent (*read)(Zentar::Agentless::Kalvex* host);
};

/// All sections, in the order in which they are read and printed. The last one moves the host
/// object to another namespace for good.
std::span<const Section> AllSections();

bool IsSectionName(const std::string& name);

/// "system, os, ..." for messages.
std::string SectionNames();

/// The named sections in reading order; all of them when no name is given. Throws UsageError for a
/// name that is unknown or given twice.
std::vector<Section> ChosenSections(const std::vector<std::string>& names);

}  // namespace command
