#include <signal.h>

#include <CLI/CLI.hpp>
#include <iostream>

#include "cli/command_error.h"
#include "cli/commands.h"
#include "cli/simulated_host.h"
#include "simhost/server.h"

namespace command {

namespace {

constexpr const char* kSimulateExample =
    "Examples:\n"
    "  kalvex simulate --port 5989\n"
    "  kalvex simulate --account root --account-password-file secret --delay 50\n"
    "  kalvex simulate --fault stall@IBMSG_PCIDevice --fault http-status@times:1=503\n\n"
    "Its address is the first line of the output. It runs until SIGINT or SIGTERM. Like the "
    "servers of\nreal hosts it ends a connection after ten requests, or after 15 idle seconds.";

struct SimulateOptions {
    std::string description_file;
    std::uint16_t port = 0;
    Transport transport = Transport::kHttps;
    SimulationOptions simulation;
};

/// Keeps the ending signals for Wait() on this thread and those that it starts later.
class EndingSignals {
public:
    EndingSignals() {
        sigemptyset(&signals_);
        sigaddset(&signals_, SIGINT);
        sigaddset(&signals_, SIGTERM);
        pthread_sigmask(SIG_BLOCK, &signals_, nullptr);
    }
    void Wait() const {
        int signal = 0;
        while (sigwait(&signals_, &signal) != 0) {
        }
    }

private:
    sigset_t signals_{};
};

int RunSimulate(const SimulateOptions& options) {
    const EndingSignals signals;
    const auto server = StartSimulatedHost(options.description_file, options.transport,
                                           options.port, options.simulation);
    std::cout << server->Url() << std::endl;
    signals.Wait();
    return kExitDone;
}

}  // namespace

void AddSimulateCommand(CLI::App& program, int& exit_status) {
    CLI::App* const command =
        program.add_subcommand("simulate", "Run the simulated host until SIGINT or SIGTERM");
    const auto options = std::make_shared<SimulateOptions>();
    command->add_option("FILE", options->description_file, "Host description [the built-in host]")
        ->type_name("");
    command->add_option("--port", options->port, "TCP port to listen on; 0 is any free one")
        ->check(CLI::Range(0, 65535).description(""))
        ->type_name("N")
        ->capture_default_str();
    AddTransportOption(*command, options->transport);
    AddSimulationOptions(*command, "--", options->simulation);
    command->footer(FaultHelp() + "\n" + kSimulateExample);
    command->callback([options, &exit_status] { exit_status = RunSimulate(*options); });
}

}  // namespace command
