#include <sys/resource.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <system_error>

#include "cli/command_error.h"
#include "cli/commands.h"
#include "cli/fleet_accounts.h"
#include "cli/fleet_hosts.h"
#include "cli/fleet_options.h"
#include "cli/fleet_outputs.h"
#include "cli/fleet_progress.h"
#include "cli/interruption.h"
#include "cli/section_choice.h"
#include "cli/simulated_host.h"
#include "fleet/run.h"
#include "fleet/summary.h"
#include "outputs/text/display_text.h"
#include "simhost/fleet.h"

namespace command {

using fleet::HostEntry;
using outputs::DisplayText;

namespace {

constexpr const char* kFleetExample =
    "Examples:\n"
    "  kalvex fleet hosts.csv --user root --output fleet.ndjson\n"
    "  kalvex fleet hosts.csv --user root --output fleet.ndjson --resume fleet.ndjson\n"
    "  kalvex fleet hosts.csv system packages --jobs 200 --host-timeout 120\n\n"
    "Exit status: 0 every host was read whole, 1 some were not, 2 wrong usage, 3 none was, 130 "
    "interrupted, 143 terminated.";

/// As a list that kalvex fleet reads.
void WriteRest(const std::vector<HostEntry>& rest, const FleetOptions& options) {
    if (rest.empty()) {
        return;
    }
    const std::string path = options.output.empty() ? "" : options.output + ".rest";
    std::ofstream file;
    if (!path.empty()) {
        file.open(path, std::ios::trunc);
    }
    std::ostream& out = file.is_open() ? file : std::cerr;
    if (!file.is_open()) {
        out << "# not read:\n";
    }
    for (const HostEntry& entry : rest) {
        out << DisplayText(entry.Name()) << '\n';
    }
    out.flush();
    if (file.is_open()) {
        std::cerr << "kalvex: " << rest.size() << " hosts were not read; " << DisplayText(path)
                  << " lists them\n";
    }
}

void WriteSummary(const fleet::Summary& summary, const FleetOptions& options) {
    summary.WriteText(std::cerr);
    if (options.summary.empty()) {
        return;
    }
    std::ofstream out(options.summary, std::ios::trunc);
    summary.WriteJson(out);
    if (!out) {
        throw CommandError(kExitPartly, "cannot write --summary " + options.summary + ": " +
                                            std::system_category().message(errno));
    }
}

ExitStatus StatusOf(const fleet::Summary& summary, std::size_t hosts) {
    const std::size_t ok = summary.Count(inventory::Status::kOk);
    if (ok == hosts) {
        return kExitDone;
    }
    return ok + summary.Count(inventory::Status::kPartial) > 0 ? kExitPartly : kExitNothing;
}

/// Each host takes a few descriptors.
void AllowManyDescriptors() {
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur < limit.rlim_max) {
        limit.rlim_cur = limit.rlim_max;
        setrlimit(RLIMIT_NOFILE, &limit);
    }
}

fleet::RunOptions RunOptionsOf(const FleetOptions& options) {
    fleet::RunOptions run;
    run.jobs = options.jobs;
    run.retries = options.retries;
    run.stop_after_refusals = options.stop_after_refusals;
    run.reading.sections = ChosenSections(options.sections);
    run.reading.connect_limit = Milliseconds(options.defaults.limits.connect);
    run.reading.request_limit = Milliseconds(options.defaults.limits.request);
    run.reading.host_limit = Milliseconds(options.defaults.limits.host);
    run.reading.is_strict = options.is_strict;
    run.reading.log_folder = options.log_folder;
    run.reading.cancel = Zentar::CancelHandle::Make();
    return run;
}

/// Until it is over, or its deadline has passed.
void Await(fleet::Run& run, FleetProgress& progress, const FleetOptions& options) {
    using std::chrono::steady_clock;
    const auto start = steady_clock::now();
    auto next = start + progress.interval();
    std::optional<steady_clock::time_point> end;
    if (options.deadline) {
        end = start + Milliseconds(*options.deadline);
    }
    for (;;) {
        const auto until = end ? std::min(next, *end) : next;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(until - steady_clock::now());
        if (run.WaitFor(std::max(left, std::chrono::milliseconds(0)))) {
            return;
        }
        if (end && steady_clock::now() >= *end) {
            run.Cancel();
            return;
        }
        if (steady_clock::now() >= next) {
            progress.Show(run.State());
            next = steady_clock::now() + progress.interval();
        }
    }
}

void OpenLogs(const FleetOptions& options) {
    LogOptions log = options.log;
    if (!options.log_folder.empty()) {
        if (!log.file.empty()) {
            throw UsageError("--log-file and --log-dir are two places for one log; give one");
        }
        std::error_code error;
        std::filesystem::create_directories(options.log_folder, error);
        if (error) {
            throw UsageError("cannot make --log-dir " + options.log_folder + ": " +
                             error.message());
        }
        log.level = log.level.value_or(1);
    }
    OpenLog(log);
}

std::vector<HostEntry> EntriesOf(const simhost::Fleet& simulated, const FleetOptions& options) {
    std::vector<HostEntry> entries;
    for (const simhost::FleetHost& host : simulated.Hosts()) {
        HostEntry entry;
        entry.host = "127.0.0.1";
        entry.port = host.port;
        entry.has_tls = options.defaults.transport == Transport::kHttps;
        entry.line = host.number;
        entries.push_back(std::move(entry));
    }
    return entries;
}

std::unique_ptr<simhost::Fleet> SimulatedOf(const FleetOptions& options) {
    if ((options.simulated == 0) == options.hosts.empty()) {
        throw UsageError(options.hosts.empty()
                             ? "no hosts to read; name the file that lists them, or use "
                               "--simulated N"
                             : "--simulated takes the place of HOSTS; leave out one of them");
    }
    if (options.simulated == 0) {
        return nullptr;
    }
    constexpr std::uint16_t kAnyPort = 0;
    return StartSimulatedFleet("", options.defaults.transport, kAnyPort, {},
                               {options.simulated, options.simulated_faults});
}

std::vector<HostEntry> HostsToRead(const FleetOptions& options, const fleet::PastRun& past,
                                   const simhost::Fleet* simulated) {
    return simulated == nullptr ? HostsOf(options, past) : EntriesOf(*simulated, options);
}

void Report(const std::vector<HostEntry>& rest, const fleet::Summary& summary,
            const FleetOptions& options, FleetProgress& progress) {
    progress.Around([&] {
        WriteRest(rest, options);
        WriteSummary(summary, options);
    });
}

/// Without a list, what stands first is a section.
void ResolveSectionInPlaceOfList(FleetOptions& options) {
    if (options.simulated > 0 && inventory::FindSection(options.hosts) != nullptr) {
        options.sections.insert(options.sections.begin(), options.hosts);
        options.hosts.clear();
    }
}

int RunFleet(const FleetOptions& options) {
    OpenLogs(options);
    AllowManyDescriptors();
    const fleet::RunOptions run_options = RunOptionsOf(options);
    const std::unique_ptr<simhost::Fleet> simulated = SimulatedOf(options);
    const fleet::PastRun past = PastOf(options);
    const std::vector<HostEntry> hosts = HostsToRead(options, past, simulated.get());
    std::vector<fleet::Task> tasks = TasksOf(hosts, options);

    FleetProgress progress;
    FleetOutputs outputs(options, past, hosts, progress,
                         [cancel = run_options.reading.cancel] { cancel.Cancel(); });
    const auto start = std::chrono::steady_clock::now();
    fleet::Run run(std::move(tasks), run_options, outputs);
    const Interruption interruption([&run] { run.Cancel(); });
    run.Start();
    Await(run, progress, options);
    const std::vector<HostEntry> rest = run.Finish();
    outputs.summary().SetRest(hosts.size() - outputs.summary().Taken());
    outputs.summary().SetDuration(std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now() - start));
    Report(rest, outputs.summary(), options, progress);
    outputs.Finish();
    return interruption.StatusOr(StatusOf(outputs.summary(), hosts.size()));
}

}  // namespace

void AddFleetCommand(CLI::App& program, int& exit_status) {
    CLI::App* const command = program.add_subcommand("fleet", "Read many hosts at a time");
    const auto options = std::make_shared<FleetOptions>();
    AddFleetOptions(*command, *options);
    command->footer(kFleetExample);
    command->callback([options, &exit_status] {
        ResolveSectionInPlaceOfList(*options);
        exit_status = RunFleet(*options);
    });
}

}  // namespace command
