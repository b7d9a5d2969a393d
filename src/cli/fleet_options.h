// The options of a fleet's run.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "cli/host_options.h"
#include "cli/log_options.h"

namespace command {

struct FleetOptions {
    std::string hosts;  ///< a file, or "-" for standard input
    std::vector<std::string> sections;
    HostOptions defaults;  ///< of hosts whose line does not say otherwise

    std::size_t simulated = 0;      ///< so many simulated hosts in place of the list
    unsigned simulated_faults = 0;  ///< so many of a hundred fail

    std::size_t jobs = 64;
    unsigned retries = 0;
    std::size_t stop_after_refusals = 3;
    std::optional<double> deadline;  ///< seconds, for the whole run
    std::string shard;               ///< "I/N"; empty for all
    bool is_strict = false;

    std::string format;  ///< "ndjson", "csv", "text"; empty: as the outputs want it
    std::string output;
    std::string folder;  ///< of --output-dir
    std::string resume;
    std::string summary;
    LogOptions log;
    std::string log_folder;
};

void AddFleetOptions(CLI::App& app, FleetOptions& options);

}  // namespace command
