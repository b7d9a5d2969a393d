// The options that say which host to read, shared by the commands that read one.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "cli/limit_options.h"
#include "cli/simulation_options.h"
#include "cli/trust_options.h"

namespace CLI {
class App;
}

namespace command {

enum class Transport { kHttp, kHttps };

struct HostOptions {
    std::string host;  ///< empty when the simulated host is to be read
    std::optional<std::uint16_t> port;
    Transport transport = Transport::kHttps;
    std::string user;
    std::string password_file;
    bool simulated = false;
    std::string description_file;  ///< of the simulated host; empty for the built-in one
    SimulationOptions simulation;
    LimitOptions limits;
    TrustOptions trust;

    std::uint16_t PortOrDefault() const;
};

/// Adds the options to a command; they are read and checked when it is parsed. The structure has
/// to outlive the parsing.
void AddHostOptions(CLI::App& app, HostOptions& options);

/// Adds --host, --port, whose default is described, and --connect-timeout alone.
void AddAddressOptions(CLI::App& app, HostOptions& options, const std::string& default_port);

/// Adds --transport alone.
void AddTransportOption(CLI::App& app, Transport& transport);

/// Completes what was not given for a real host from KALVEX_HOST and KALVEX_USER. Throws UsageError
/// unless exactly one host is named, in a form that can be connected to.
void CheckHostOptions(HostOptions& options);

}  // namespace command
