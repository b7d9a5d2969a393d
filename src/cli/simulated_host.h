// Starts simulated hosts for the commands.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "cli/host_options.h"

namespace simhost {
class Fleet;
class Server;
}  // namespace simhost

namespace command {

/// Serves the built-in host, or the one that a file describes, as the options say; port 0 is any
/// free one. Throws UsageError when the description, the port or an option cannot be used.
std::unique_ptr<simhost::Server> StartSimulatedHost(const std::string& description_file,
                                                    Transport transport, std::uint16_t port,
                                                    const SimulationOptions& simulation);

/// How many hosts, and how many of a hundred fail.
struct FleetSize {
    std::size_t hosts = 0;
    unsigned fault_percent = 0;
};

/// The same for a fleet of hosts, which differ as their numbers say, on consecutive ports from the
/// given one, or with 0 on any free ones.
std::unique_ptr<simhost::Fleet> StartSimulatedFleet(const std::string& description_file,
                                                    Transport transport, std::uint16_t port,
                                                    const SimulationOptions& simulation,
                                                    const FleetSize& size);

}  // namespace command
