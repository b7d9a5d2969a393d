#include "cli/fleet_hosts.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <system_error>

#include "cli/command_error.h"
#include "outputs/text/display_text.h"

namespace command {

using fleet::HostEntry;
using outputs::DisplayText;

namespace {

std::string SystemWords() { return std::system_category().message(errno); }

fleet::HostDefaults DefaultsOf(const HostOptions& options) {
    return {options.port.value_or(0),
            options.transport == Transport::kHttps,
            options.user,
            options.password_file,
            options.trust.ca_file,
            options.trust.fingerprints};
}

fleet::HostList ReadList(const FleetOptions& options) {
    const fleet::HostDefaults defaults = DefaultsOf(options.defaults);
    if (options.hosts == "-") {
        return fleet::ReadHostList(std::cin, defaults);
    }
    std::ifstream in(options.hosts);
    if (!in) {
        throw UsageError("cannot read the list of hosts " + options.hosts + ": " + SystemWords());
    }
    return fleet::ReadHostList(in, defaults);
}

/// Each on a line of its own, as far as people read them.
void CheckProblems(const FleetOptions& options, const std::vector<fleet::ListProblem>& problems) {
    constexpr std::size_t kMostReportedLines = 20;
    for (std::size_t i = 0; i < std::min(problems.size(), kMostReportedLines); ++i) {
        std::cerr << "kalvex: " << DisplayText(options.hosts) << " line " << problems[i].line
                  << ": " << DisplayText(problems[i].text) << '\n';
    }
    if (!problems.empty()) {
        throw UsageError(std::to_string(problems.size()) +
                         (problems.size() == 1 ? " line" : " lines") +
                         " of the list of hosts cannot be used, and nothing was read; correct " +
                         (problems.size() == 1 ? "it" : "them"));
    }
}

std::vector<HostEntry> Sharded(const std::vector<HostEntry>& hosts, const std::string& shard) {
    if (shard.empty()) {
        return hosts;
    }
    std::size_t index = 0;
    std::size_t count = 0;
    const char* const end = shard.data() + shard.size();
    const auto first = std::from_chars(shard.data(), end, index);
    const bool has_slash = first.ec == std::errc() && first.ptr != end && *first.ptr == '/';
    const auto second = has_slash ? std::from_chars(first.ptr + 1, end, count) : first;
    if (!has_slash || second.ec != std::errc() || second.ptr != end || index == 0 ||
        index > count) {
        throw UsageError("--shard takes I/N, I from 1 to N, such as 2/4, not \"" + shard + "\"");
    }
    return fleet::ShardOf(hosts, index, count);
}

std::vector<HostEntry> Remaining(std::vector<HostEntry> hosts, const fleet::PastRun& past) {
    const auto done = past.Done();
    std::erase_if(
        hosts, [&](const HostEntry& host) { return done.contains(fleet::HostKey(host.Name())); });
    return hosts;
}

}  // namespace

fleet::PastRun PastOf(const FleetOptions& options) {
    try {
        return options.resume.empty() ? fleet::PastRun() : fleet::ReadPastRun(options.resume);
    } catch (const std::runtime_error& error) {
        throw UsageError(std::string("--resume: ") + error.what() +
                         "; give it an ndjson output of kalvex fleet");
    }
}

std::vector<HostEntry> HostsOf(const FleetOptions& options, const fleet::PastRun& past) {
    const fleet::HostList list = ReadList(options);
    CheckProblems(options, list.problems);
    if (list.hosts.empty()) {
        throw UsageError("the list of hosts " + options.hosts + " is empty; name a host a line");
    }
    return Remaining(Sharded(list.hosts, options.shard), past);
}

}  // namespace command
