// The options that say which events are wanted.
#pragma once

#include <string>
#include <vector>

#include "inventory/event_filter.h"
#include "inventory/sections.h"

namespace CLI {
class App;
}

namespace command {

/// Adds --since and --last, and reads them. The filter has to outlive the parsing.
void AddEventOptions(CLI::App& app, inventory::EventFilter& filter);

/// Throws UsageError when events are to be filtered and are not among the sections.
void CheckEventOptions(const inventory::EventFilter& filter,
                       const std::vector<inventory::Section>& sections);

}  // namespace command
