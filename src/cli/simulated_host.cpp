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

}  // namespace

std::unique_ptr<simhost::Server> StartSimulatedHost(const std::string& description_file,
                                                    Transport transport, std::uint16_t port) {
    simhost::ServerOptions options = simhost::RealServerHabits();
    options.transport =
        transport == Transport::kHttps ? simhost::Transport::kHttps : simhost::Transport::kHttp;
    options.address = kSimulatedAddress;
    options.port = port;
    try {
        return std::make_unique<simhost::Server>(Describe(description_file), options);
    } catch (const std::system_error& e) {
        throw UsageError("cannot start the simulated host: " + std::string(e.what()) +
                         "; choose another --port");
    }
}

}  // namespace command
