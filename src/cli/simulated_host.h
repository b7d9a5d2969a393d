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

constexpr const char* kSimulatedAddress = "127.0.0.1";

/// Serves the built-in host, or the one that a file describes, on a port of this machine's loopback
/// address; port 0 is any free one. Throws UsageError when the description or the port cannot be
/// used.
std::unique_ptr<simhost::Server> StartSimulatedHost(const std::string& description_file,
                                                    Transport transport, std::uint16_t port);

}  // namespace command
