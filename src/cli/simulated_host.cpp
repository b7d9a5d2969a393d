#include "cli/simulated_host.h"

#include <system_error>

#include "cli/command_error.h"
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
    return error.code() == std::errc::address_in_use
               ? "choose another --port"
               : "give " + simulation.prefix + "address a numeric address of this machine";
}

}  // namespace

std::unique_ptr<simhost::Server> StartSimulatedHost(const std::string& description_file,
                                                    Transport transport, std::uint16_t port,
                                                    const SimulationOptions& simulation) {
    simhost::ServerOptions options = simhost::RealServerHabits();
    options.transport =
        transport == Transport::kHttps ? simhost::Transport::kHttps : simhost::Transport::kHttp;
    options.port = port;
    ApplyTo(options, simulation);
    const simhost::HostDescription description = Describe(description_file);
    try {
        auto server = std::make_unique<simhost::Server>(description, options);
        InjectFaults(*server, simulation);
        return server;
    } catch (const std::system_error& e) {
        throw UsageError("cannot start the simulated host: " + std::string(e.what()) + "; " +
                         Remedy(e, simulation));
    }
}

}  // namespace command
