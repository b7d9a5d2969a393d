// The hosts that a fleet's run is to read.
#pragma once

#include <vector>

#include "cli/fleet_options.h"
#include "fleet/host_list.h"
#include "fleet/past_run.h"

namespace command {

/// The earlier output of --resume; nothing without one. Throws UsageError.
fleet::PastRun PastOf(const FleetOptions& options);

/// The hosts of the list, or of its shard, that are not done. Throws UsageError; lines that cannot
/// be used are reported on standard error first.
std::vector<fleet::HostEntry> HostsOf(const FleetOptions& options, const fleet::PastRun& past);

}  // namespace command
