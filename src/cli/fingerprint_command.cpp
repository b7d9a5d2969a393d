#include <CLI/CLI.hpp>
#include <iostream>

#include "cli/certificate_source.h"
#include "cli/command_error.h"
#include "cli/commands.h"
#include "cli/failure_report.h"
#include "cli/host_options.h"
#include "cli/interruption.h"
#include "cli/progress.h"
#include "outputs/text/display_text.h"

namespace command {

using outputs::DisplayText;

namespace {

constexpr const char* kFingerprintExample =
    "Example:\n"
    "  kalvex fingerprint --host esx01.example.com\n\n"
    "Compare what it prints with what the host itself says, for instance on its console, before "
    "you give it to --fingerprint. Nothing but a TLS handshake is sent to the host.\n\n"
    "Exit status: 0 printed, 2 wrong usage, 3 the host showed no certificate, 130 interrupted, 143 "
    "terminated.";

/// A name on each line, so that none can pass for two.
void WriteNames(const std::vector<std::string>& names) {
    const char* heading = "Names       ";
    for (const std::string& name : names) {
        std::cout << heading << DisplayText(name) << '\n';
        heading = "            ";
    }
    if (names.empty()) {
        std::cout << heading << "-\n";
    }
}

void Write(const ShownCertificate& certificate) {
    std::cout << "Subject     " << DisplayText(certificate.subject) << '\n'
              << "Issuer      " << DisplayText(certificate.issuer) << '\n';
    WriteNames(certificate.names);
    std::cout << "Valid from  " << DisplayText(certificate.not_before) << '\n'
              << "Valid to    " << DisplayText(certificate.not_after) << '\n'
              << "\nSHA-256 fingerprint:\n"
              << certificate.fingerprint << std::endl;
}

int RunFingerprint(HostOptions options) {
    CheckHostOptions(options);
    Zentar::Cancellation cancellation;
    const Interruption interruption([&cancellation] { cancellation.Cancel(); });
    Progress progress(options.host, true);
    progress.Show("connecting");
    const auto found = FetchCertificate(options.host, options.PortOrDefault(),
                                        Milliseconds(options.limits.connect), cancellation);
    progress.Hide();
    if (const auto* const failure = std::get_if<Zentar::Failure>(&found)) {
        FailureReport report;
        report.Add(
            "connecting to " + options.host + " port " + std::to_string(options.PortOrDefault()),
            {*failure});
        report.Write(std::cerr);
        return interruption.StatusOr(kExitNothing);
    }
    Write(std::get<ShownCertificate>(found));
    return interruption.StatusOr(kExitDone);
}

}  // namespace

void AddFingerprintCommand(CLI::App& program, int& exit_status) {
    CLI::App* const command = program.add_subcommand(
        "fingerprint", "Print a host's certificate and its fingerprint for --fingerprint");
    const auto options = std::make_shared<HostOptions>();
    AddAddressOptions(*command, *options, "5989");
    command->footer(kFingerprintExample);
    command->callback([options, &exit_status] { exit_status = RunFingerprint(*options); });
}

}  // namespace command
