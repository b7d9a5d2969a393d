#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>

#include "cli/command_error.h"
#include "cli/commands.h"
#include "cli/failure_report.h"
#include "cli/host_session.h"
#include "module/exsi/kalvex.h"

namespace command {

namespace {

constexpr const char* kSupportedExample =
    "Example:\n"
    "  kalvex supported --host esx01.example.com --user root\n\n"
    "Exit status: 0 supported, 1 unsupported, 2 wrong usage, 3 the host could not be asked, 130 "
    "interrupted, 143 terminated.";

struct SupportedOptions {
    HostOptions host;
    LogOptions log;
};

using Zentar::Failure;
using Zentar::FailureKind;

/// The CIM server's own refusal of the request is an answer to the question; any other failure is
/// none.
bool LeavesUnanswered(const Failure& failure) {
    constexpr std::int32_t kCimAccessDenied = 2;  // DSP0200; HTTP says 403
    switch (failure.kind) {
        case FailureKind::kUnknownNamespace:
        case FailureKind::kUnknownClass:
        case FailureKind::kCimError:
            return false;
        case FailureKind::kNotPermitted:
            return failure.code != kCimAccessDenied;
        default:
            return true;
    }
}

/// Of the request, or of connecting for it.
bool IsOfRequest(const Failure& failure) { return !failure.class_name.empty(); }

int RunSupported(const SupportedOptions& options) {
    HostSession session(options.host, options.log);
    session.progress().Show("asking");
    const bool unsupported = session.host().IsUnSpportedEXSIVersion();
    session.progress().Hide();
    const std::vector<Failure> failures = session.host().TakeFailures().failures;
    const bool is_unanswered = std::ranges::any_of(failures, [](const Failure& failure) {
        return IsOfRequest(failure) && LeavesUnanswered(failure);
    });
    if (is_unanswered) {
        FailureReport report;
        report.Add(session.Connecting(), session.connecting_failures().failures);
        report.Add("supported", failures);
        report.Write(std::cerr);
        return session.interruption().StatusOr(kExitNothing);
    }
    std::cout << (unsupported ? "unsupported" : "supported") << std::endl;
    return session.interruption().StatusOr(unsupported ? kExitPartly : kExitDone);
}

}  // namespace

void AddSupportedCommand(CLI::App& program, int& exit_status) {
    CLI::App* const command = program.add_subcommand(
        "supported", "Report whether a host has the namespace that the inventory needs");
    const auto options = std::make_shared<SupportedOptions>();
    AddHostOptions(*command, options->host);
    AddLogOptions(*command, options->log);
    command->footer(kSupportedExample);
    command->callback([options, &exit_status] { exit_status = RunSupported(*options); });
}

}  // namespace command
