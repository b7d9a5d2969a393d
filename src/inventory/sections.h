// The sections of an inventory: their names, their order, and how each is read.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "inventory/table.h"

namespace Zentar::Agentless {
class Kalvex;
}

namespace inventory {

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

/// Null when there is none of this name.
const Section* FindSection(const std::string& name);

/// "system, os, ..." for messages.
std::string SectionNames();

}  // namespace inventory
