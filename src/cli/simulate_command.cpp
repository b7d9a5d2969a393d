#include <signal.h>

#include <CLI/CLI.hpp>
#include <iostream>

#include "cli/command_error.h"
#include "cli/commands.h"
#include "cli/simulated_host.h"
#include "simhost/fleet.h"
#include "simhost/server.h"

namespace command {

namespace {

constexpr const char* kSimulateExample =
    "Examples:\n"
    "  kalvex simulate --port 5989\n"
    "  kalvex simulate --account root --account-password-file secret --delay 50\n"
    "  kalvex simulate --fault stall@IBMSG_PCIDevice --fault http-status@times:1=503\n"
    "  kalvex simulate --hosts 1000 --faults 5 > hosts.csv\n\n"
    "Its address is the first line of the output. It runs until SIGINT or SIGTERM. Like the "
    "servers of\nreal hosts it ends a connection after ten requests, or after 15 idle seconds.\n\n"
    "With --hosts it serves that many, on --port and those that follow, and prints the list that\n"
    "\"kalvex fleet\" reads. Each has a name, a UUID, serial numbers, addresses and versions of "
    "its\n"
    "own, the same in every run; the other options hold for all. Of those that --faults makes "
    "fail,\n"
    "some refuse connections, some never answer, some answer a byte at a time, some refuse all\n"
    "credentials, and some cut their answers off. A higher PERCENT adds hosts to these.";

struct SimulateOptions {
    std::string description_file;
    std::uint16_t port = 0;
    Transport transport = Transport::kHttps;
    FleetSize fleet;  ///< no hosts: the one host that is described
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

/// As `kalvex fleet` reads it.
void PrintHostList(const simhost::Fleet& fleet, const SimulateOptions& options) {
    const char* const transport = options.transport == Transport::kHttps ? "https" : "http";
    std::cout << "host,port,transport\n";
    for (const std::uint16_t port : fleet.Ports()) {
        std::cout << options.simulation.address << ',' << port << ',' << transport << '\n';
    }
    std::cout << std::flush;
}

int RunSimulate(const SimulateOptions& options) {
    const EndingSignals signals;
    if (options.fleet.hosts > 0) {
        const auto fleet = StartSimulatedFleet(options.description_file, options.transport,
                                               options.port, options.simulation, options.fleet);
        PrintHostList(*fleet, options);
        signals.Wait();
        return kExitDone;
    }
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
    constexpr std::size_t kMostHosts = 65535;
    CLI::Option* const hosts =
        command->add_option("--hosts", options->fleet.hosts, "Serve so many hosts that differ")
            ->check(CLI::Range(std::size_t{1}, kMostHosts).description(""))
            ->type_name("N");
    command
        ->add_option("--faults", options->fleet.fault_percent,
                     "So many of a hundred hosts fail, the same ones in every run")
        ->check(CLI::Range(0U, 100U).description(""))
        ->type_name("PERCENT")
        ->needs(hosts);
    AddTransportOption(*command, options->transport);
    AddSimulationOptions(*command, "--", options->simulation);
    command->footer(FaultHelp() + "\n" + kSimulateExample);
    command->callback([options, &exit_status] { exit_status = RunSimulate(*options); });
}

}  // namespace command
