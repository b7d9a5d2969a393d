#include "cli/simulation_options.h"

#include <arpa/inet.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <stdexcept>

#include "cli/command_error.h"
#include "cli/password_file.h"
#include "simhost/server.h"

namespace command {

namespace {

constexpr unsigned kLongestDelay = 60'000;

constexpr const char* kFaultForm =
    "Way to fail: NAME, NAME=NUMBER, NAME=TEXT or NAME=NUMBER,TEXT, with limits NAME@LIMIT,...; "
    "may be given several times, and the first that fits a request applies";

constexpr const char* kLimitHelp =
    "Limits, separated by commas:\n"
    "  CLASS           only requests for this class, or for associators of its objects\n"
    "  operation:NAME  only this operation: EnumerateInstances or Associators\n"
    "  after:COUNT     lets so many requests (or connections) that fit pass first\n"
    "  times:COUNT     applies so many times, then no more\n";

void RequireWholeAccount(const SimulationOptions& options) {
    const std::string account = options.prefix + "account";
    const std::string file = options.prefix + "account-password-file";
    if (options.account.empty() != options.account_password_file.empty()) {
        throw UsageError(options.account.empty()
                             ? file + " needs an account; name it with " + account
                             : account + " needs a password; give it with " + file + " FILE");
    }
}

void RequireNumericAddress(const SimulationOptions& options) {
    in6_addr address{};
    const char* const text = options.address.c_str();
    if (inet_pton(AF_INET, text, &address) != 1 && inet_pton(AF_INET6, text, &address) != 1) {
        throw UsageError(options.prefix +
                         "address takes a numeric address such as 127.0.0.1 or ::1, not \"" +
                         options.address + "\"");
    }
}

}  // namespace

std::string SimulationOptions::FirstGiven() const {
    const auto given =
        std::ranges::find_if(added, [](const CLI::Option* option) { return option->count() > 0; });
    return given == added.end() ? "" : (*given)->get_name();
}

void AddSimulationOptions(CLI::App& app, const std::string& prefix, SimulationOptions& options) {
    options.prefix = prefix;
    const auto add = [&](const std::string& name, auto& value, const std::string& meaning) {
        CLI::Option* const option = app.add_option(prefix + name, value, meaning);
        if (prefix != "--") {
            option->group("Simulated host");
        }
        options.added.push_back(option);
        return option;
    };
    add("account", options.account, "User name that requests need [none]")->type_name("NAME");
    add("account-password-file", options.account_password_file,
        "File that holds this user's password, - for standard input")
        ->type_name("FILE");
    add("delay", options.delay, "Delay of a round trip")
        ->check(CLI::Range(0U, kLongestDelay).description(""))
        ->type_name("MILLISECONDS")
        ->capture_default_str();
    add("address", options.address, "Numeric address to listen on, IPv4 or IPv6")
        ->type_name("ADDRESS")
        ->capture_default_str();
    add("fault", options.faults,
        prefix == "--" ? kFaultForm : "Way to fail, as \"kalvex simulate --help\" lists them")
        ->allow_extra_args(false)
        ->type_name("FAULT");
    RefusePasswordArgument(app, prefix + "account-password",
                           "use " + prefix + "account-password-file FILE");
}

std::string FaultHelp() {
    const auto names = simhost::Faults::Names();
    std::size_t width = 0;
    for (const auto& [name, value, meaning] : names) {
        width = std::max(width, name.size() + value.size());
    }
    std::string help = "Faults:\n";
    for (const auto& [name, value, meaning] : names) {
        const std::string form = name + value;
        help.append("  ").append(form).append(width + 2 - form.size(), ' ');
        help.append(meaning).append("\n");
    }
    return help + "\n" + kLimitHelp;
}

void ApplyTo(simhost::ServerOptions& server, const SimulationOptions& options) {
    RequireNumericAddress(options);
    RequireWholeAccount(options);
    server.address = options.address;
    server.round_trip_delay = std::chrono::milliseconds(options.delay);
    if (!options.account.empty()) {
        server.user = options.account;
        server.password = ReadPasswordFile(options.account_password_file,
                                           options.prefix + "account-password-file")
                              .text();
    }
}

std::vector<simhost::Fault> FaultsOf(const SimulationOptions& options) {
    std::vector<simhost::Fault> faults;
    for (const std::string& fault : options.faults) {
        try {
            faults.push_back(simhost::Faults::ByName(fault));
        } catch (const std::invalid_argument& e) {
            throw UsageError(options.prefix + "fault: " + e.what());
        }
    }
    return faults;
}

}  // namespace command
