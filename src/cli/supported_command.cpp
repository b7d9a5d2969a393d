#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>

#include "cli/command_error.h"
#include "cli/commands.h"
#include "cli/failure_explanation.h"
#include "cli/failure_report.h"
#include "cli/host_session.h"
#include "module/exsi/kalvex.h"

namespace command {

namespace {

constexpr const char* kExample =
    "Example:\n"
    "  kalvex supported --host esx01.example.com --user root\n\n"
    "Exit status: 0 supported, 1 unsupported, 2 wrong usage, 3 the host could not be asked.";

struct SupportedOptions {
    HostOptions host;
    LogOptions log;
};

/// The host's own refusal of the request is an answer to the question; any other failure is none.
bool LeavesUnanswered(const Failure& failure) {
    return Explain(failure.reason).cause != Cause::kCimError;
}

int RunSupported(const SupportedOptions& options) {
    HostSession session(options.host, options.log);
    const bool unsupported = session.host().IsUnSpportedEXSIVersion();
    const std::vector<Failure> failures = session.failures().Take();
    if (!unsupported && std::ranges::any_of(failures, LeavesUnanswered)) {
        FailureReport report;
        report.Add("supported", failures);
        report.Write(std::cerr);
        return kExitNothing;
    }
    std::cout << (unsupported ? "unsupported" : "supported") << std::endl;
    return unsupported ? kExitPartly : kExitDone;
}

}  // namespace

void AddSupportedCommand(CLI::App& program, int& exit_status) {
    CLI::App* const command = program.add_subcommand(
        "supported", "Tell whether a host has the namespace that the inventory needs");
    const auto options = std::make_shared<SupportedOptions>();
    AddHostOptions(*command, options->host);
    AddLogOptions(*command, options->log);
    command->footer(kExample);
    command->callback([options, &exit_status] { exit_status = RunSupported(*options); });
}

}  // namespace command
