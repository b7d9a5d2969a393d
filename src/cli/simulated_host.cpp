#include "cli/simulated_host.h"

#include <stdexcept>
#include <system_error>
#include <vector>

#include "cli/command_error.h"
#include "simhost/fleet.h"
#include "simhost/server.h"
#include "simhost/server_habits.h"

namespace command {

namespace {

simhost::HostDescription Describe(const std::string& file) {
    try {
        return file.empty() ? simhost::HostDescription::Builtin()
                            : simhost::HostDescription::FromFile(file);
    } catch (const simhost::DescriptionError& e) {
        throw UsageError("cannot use the host description: " + std::string(e.what()));
    }
}

std::string Remedy(const std::system_error& error, const SimulationOptions& simulation) {
    if (error.code() == std::errc::too_many_files_open) {
        return "raise the hard limit of open files (ulimit -Hn), or simulate fewer hosts";
    }
    return error.code() == std::errc::address_in_use
               ? "choose another --port"
               : "give " + simulation.prefix + "address a numeric address of this machine";
}

simhost::ServerOptions ServerOptionsOf(Transport transport, std::uint16_t port,
                                       const SimulationOptions& simulation) {
    simhost::ServerOptions options = simhost::RealServerHabits();
    options.transport =
        transport == Transport::kHttps ? simhost::Transport::kHttps : simhost::Transport::kHttp;
    options.port = port;
    ApplyTo(options, simulation);
    return options;
}

/// Starts what `start` makes, and makes it fail as the options say.
template <class Start>
auto StartSimulation(const char* what, const SimulationOptions& simulation, Start start) {
    const std::vector<simhost::Fault> faults = FaultsOf(simulation);
    try {
        auto started = start();
        for (const simhost::Fault& fault : faults) {
            started->InjectFault(fault);
        }
        return started;
    } catch (const std::system_error& e) {
        throw UsageError("cannot start the " + std::string(what) + ": " + std::string(e.what()) +
                         "; " + Remedy(e, simulation));
    } catch (const std::invalid_argument& e) {
        throw UsageError("cannot start the " + std::string(what) + ": " + std::string(e.what()) +
                         "; choose a lower --port, or simulate fewer hosts");
    }
}

}  // namespace

std::unique_ptr<simhost::Server> StartSimulatedHost(const std::string& description_file,
                                                    Transport transport, std::uint16_t port,
                                                    const SimulationOptions& simulation) {
    const simhost::ServerOptions options = ServerOptionsOf(transport, port, simulation);
    const simhost::HostDescription description = Describe(description_file);
    return StartSimulation("simulated host", simulation,
                           [&] { return std::make_unique<simhost::Server>(description, options); });
}

std::unique_ptr<simhost::Fleet> StartSimulatedFleet(const std::string& description_file,
                                                    Transport transport, std::uint16_t port,
                                                    const SimulationOptions& simulation,
                                                    const FleetSize& size) {
    const simhost::ServerOptions options = ServerOptionsOf(transport, port, simulation);
    const simhost::HostDescription description = Describe(description_file);
    return StartSimulation("simulated fleet", simulation, [&] {
        return std::make_unique<simhost::Fleet>(description, options, size.hosts,
                                                size.fault_percent);
    });
}

}  // namespace command
