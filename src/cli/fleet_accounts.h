// The accounts that the hosts of a fleet are read by.
#pragma once

#include <vector>

#include "cli/fleet_options.h"
#include "fleet/task.h"

namespace command {

/// Reads the password files, each once, and finds the common password where a host needs it. Hosts
/// with the same user and password share an account. Throws UsageError.
std::vector<fleet::Task> TasksOf(const std::vector<fleet::HostEntry>& hosts,
                                 const FleetOptions& options);

}  // namespace command
