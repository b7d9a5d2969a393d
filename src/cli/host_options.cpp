#include "cli/host_options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdlib>

#include "cli/command_error.h"
#include "cli/password_file.h"

namespace command {

namespace {

/// An IPv6 address as URLs write it.
std::string WithoutBrackets(const std::string& host) {
    const bool bracketed = host.size() > 2 && host.front() == '[' && host.back() == ']';
    return bracketed ? host.substr(1, host.size() - 2) : host;
}

void CheckHostName(const std::string& host) {
    if (host.find_first_of("/@ \t\r\n") != std::string::npos) {
        throw UsageError("--host takes a name or an address alone, such as esx01.example.com");
    }
    if (std::ranges::count(host, ':') == 1) {
        throw UsageError("--host takes a name or an address alone; give the port with --port");
    }
}

void CheckSimulated(const HostOptions& simulated) {
    if (!simulated.host.empty() || simulated.port) {
        throw UsageError(
            "--simulated takes the place of a real host; leave out --host and --port, or leave out "
            "--simulated");
    }
    const bool has_user = !simulated.user.empty() || !simulated.password_file.empty();
    if (has_user && simulated.simulation.account.empty()) {
        throw UsageError(
            "the simulated host needs no --user and no --password-file unless it is given "
            "--simulated-account; add that, or leave out --simulated");
    }
    if (simulated.password_file == "-" && simulated.simulation.account_password_file == "-") {
        throw UsageError("standard input holds one password; give a file for the other");
    }
}

/// What an option says stays.
void CompleteFromEnvironment(const char* variable, std::string& value) {
    const char* const given = std::getenv(variable);
    if (value.empty() && given != nullptr) {
        value = given;
    }
}

void CheckNotSimulated(const HostOptions& real) {
    const std::string option = real.simulation.FirstGiven();
    if (!option.empty()) {
        throw UsageError(option + " is about the simulated host; add --simulated, or leave out " +
                         option);
    }
}

}  // namespace

std::uint16_t HostOptions::PortOrDefault() const {
    return port.value_or(transport == Transport::kHttps ? 5989 : 5988);
}

void AddTransportOption(CLI::App& app, Transport& transport) {
    static const std::map<std::string, Transport> kNames{{"https", Transport::kHttps},
                                                         {"http", Transport::kHttp}};
    app.add_option_function<std::string>(
           "--transport", [&transport](const std::string& name) { transport = kNames.at(name); },
           "https or http")
        ->check(CLI::IsMember({"https", "http"}).description(""))
        ->type_name("https|http")
        ->default_str("https");
}

void AddAddressOptions(CLI::App& app, HostOptions& options, const std::string& default_port) {
    app.add_option("--host", options.host,
                   "Name or address of the host to read [environment variable KALVEX_HOST]")
        ->type_name("HOST");
    app.add_option("--port", options.port, "TCP port [" + default_port + "]")
        ->check(CLI::Range(1, 65535).description(""))
        ->type_name("N");
    AddConnectLimit(app, options.limits);
}

void AddHostOptions(CLI::App& app, HostOptions& options) {
    AddAddressOptions(app, options, "5989 for https, 5988 for http");
    AddReadingLimits(app, options.limits);
    AddTransportOption(app, options.transport);
    app.add_option("--user", options.user,
                   "User name on the host [environment variable KALVEX_USER]")
        ->type_name("NAME");
    app.add_option("--password-file", options.password_file,
                   "File that holds the password, - for standard input; else the environment "
                   "variable KALVEX_PASSWORD, else it is asked on the terminal")
        ->type_name("FILE");
    AddTrustOptions(app, options.trust);
    app.add_option_function<std::string>(
           "--simulated",
           [&options](const std::string& file) {
               options.simulated = true;
               options.description_file = file;
           },
           "Read the simulated host in place of --host: the built-in one, or the one that FILE "
           "describes")
        ->expected(0, 1)
        ->type_name("[FILE]");
    AddSimulationOptions(app, "--simulated-", options.simulation);
    RefusePasswordArgument(app, "--password",
                           "use --password-file FILE or KALVEX_PASSWORD, or type it when asked");
}

void CheckHostOptions(HostOptions& options) {
    if (options.simulated) {
        CheckSimulated(options);
        return;
    }
    CheckNotSimulated(options);
    CompleteFromEnvironment("KALVEX_HOST", options.host);
    CompleteFromEnvironment("KALVEX_USER", options.user);
    if (options.host.empty()) {
        throw UsageError(
            "no host to read; name it with --host HOST, or use --simulated for the built-in one");
    }
    options.host = WithoutBrackets(options.host);
    CheckHostName(options.host);
    CheckTrustOptions(options.trust, options.transport == Transport::kHttps);
}

}  // namespace command
