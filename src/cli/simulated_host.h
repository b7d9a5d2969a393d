// Starts the simulated host for the commands.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "cli/host_options.h"

namespace simhost {
class Server;
}

namespace command {

/// Serves the built-in host, or the one that a file describes, as the options say; port 0 is any
/// free one. Throws UsageError when the description, the port or an option cannot be used.
std::unique_ptr<simhost::Server> StartSimulatedHost(const std::string& description_file,
                                                    Transport transport, std::uint16_t port,
                                                    const SimulationOptions& simulation);

}  // namespace command
