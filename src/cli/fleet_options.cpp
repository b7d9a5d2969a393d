#include "cli/fleet_options.h"

#include <CLI/CLI.hpp>

#include "cli/password_file.h"
#include "inventory/sections.h"

namespace command {

namespace {

constexpr std::size_t kMostJobs = 4096;
constexpr unsigned kMostRetries = 100;
constexpr std::size_t kMostRefusals = 1000;
constexpr std::size_t kMostSimulated = 60'000;

void AddDefaults(CLI::App& app, HostOptions& defaults) {
    app.add_option("--port", defaults.port,
                   "TCP port of hosts without one [5989 for https, 5988 for http]")
        ->check(CLI::Range(1, 65535).description(""))
        ->type_name("N");
    AddTransportOption(app, defaults.transport);
    app.add_option("--user", defaults.user, "User name on hosts without one")
        ->envname("KALVEX_USER")
        ->type_name("NAME");
    app.add_option("--password-file", defaults.password_file,
                   "File that holds the password of hosts without one; else the environment "
                   "variable KALVEX_PASSWORD, else it is asked once on the terminal")
        ->type_name("FILE");
    AddTrustOptions(app, defaults.trust);
    RefusePasswordArgument(app, "--password",
                           "use --password-file FILE or KALVEX_PASSWORD, or type it when asked");
}

void AddLimits(CLI::App& app, FleetOptions& options) {
    AddConnectLimit(app, options.defaults.limits);
    AddRequestLimit(app, options.defaults.limits);
    AddSecondsOption(app, "--host-timeout", options.defaults.limits.host,
                     "Seconds that one host may take, whatever it does")
        ->capture_default_str();
    AddSecondsOption(app, "--deadline", options.deadline, "Seconds that the whole run may take");
}

void AddRunOptions(CLI::App& app, FleetOptions& options) {
    app.add_option("--jobs", options.jobs, "Hosts that are read at a time")
        ->check(CLI::Range(std::size_t{1}, kMostJobs).description(""))
        ->type_name("N")
        ->capture_default_str();
    app.add_option("--retry", options.retries,
                   "How often a host that was unreachable, timed out or busy is tried again at the "
                   "end of the run")
        ->check(CLI::Range(0U, kMostRetries).description(""))
        ->type_name("N")
        ->capture_default_str();
    app.add_option("--stop-after-refusals", options.stop_after_refusals,
                   "Hosts that may refuse an account that none accepts, before it is tried no more")
        ->check(CLI::Range(std::size_t{1}, kMostRefusals).description(""))
        ->type_name("N")
        ->capture_default_str();
    app.add_option("--shard", options.shard, "Read only the I-th of every N hosts of the list")
        ->type_name("I/N");
    app.add_flag("--strict", options.is_strict,
                 "Count as a failure what a host answers that it does not have");
}

void AddOutputs(CLI::App& app, FleetOptions& options) {
    app.add_option("--format", options.format,
                   "ndjson: one JSON document a line, for programs; csv: files in --output-dir; "
                   "text: a table of hosts [text on a terminal, else ndjson]")
        ->check(CLI::IsMember({"ndjson", "csv", "text"}).description(""))
        ->type_name("ndjson|csv|text");
    app.add_option("--output", options.output,
                   "File for the ndjson documents, instead of standard output")
        ->type_name("FILE");
    app.add_option("--output-dir", options.folder,
                   "Folder for a CSV file of each list and one of failures, made when it is not "
                   "there")
        ->type_name("DIR");
    app.add_option("--resume", options.resume,
                   "Earlier ndjson output: hosts that are ok in it are not read again; may be the "
                   "file of --output")
        ->type_name("FILE");
    app.add_option("--summary", options.summary, "File for the summary as JSON")->type_name("FILE");
}

}  // namespace

void AddFleetOptions(CLI::App& app, FleetOptions& options) {
    app.add_option("HOSTS", options.hosts,
                   "CSV file whose header line names host, and optionally port, transport, user, "
                   "password_file, ca_file, fingerprint; or a list of names, one a line; - for "
                   "standard input")
        ->type_name("");
    app.add_option("SECTION", options.sections,
                   "Sections to read: " + inventory::SectionNames() + " [all]")
        ->type_name("");
    app.add_option("--simulated", options.simulated,
                   "Read so many simulated hosts of this machine in place of HOSTS")
        ->check(CLI::Range(std::size_t{1}, kMostSimulated).description(""))
        ->type_name("N");
    app.add_option(
           "--simulated-faults", options.simulated_faults,
           "How many of a hundred simulated hosts are dead, stall, trickle, refuse or break")
        ->check(CLI::Range(0U, 100U).description(""))
        ->type_name("PERCENT");
    AddDefaults(app, options.defaults);
    AddRunOptions(app, options);
    AddLimits(app, options);
    AddOutputs(app, options);
    AddLogOptions(app, options.log);
    app.add_option("--log-dir", options.log_folder,
                   "Folder for a log of each host's own, HOST_PORT.log, at level 1 unless "
                   "--log-level says otherwise")
        ->type_name("DIR");
}

}  // namespace command
