#include "cli/log_options.h"

#include <CLI/CLI.hpp>

#include "cli/command_error.h"
#include "common/log/log_control.h"

namespace command {

void AddLogOptions(CLI::App& app, LogOptions& options) {
    app.add_option(
           "--log-level", options.level,
           "Write the module's log: 0 nothing, 1 failures, 2 also missing properties, 3 also "
           "progress and results, 4 everything")
        ->check(CLI::Range(0, 4).description(""))
        ->type_name("0..4");
    app.add_option("--log-file", options.file,
                   "File to append the log to, at level 1 unless --log-level says otherwise; with "
                   "neither option nothing is logged [standard error]")
        ->type_name("FILE");
}

void OpenLog(const LogOptions& options) {
    Zentar::SetMinLogLevel(options.LevelOrDefault());
    if (options.file.empty()) {
        return;
    }
    const std::string problem = Zentar::LogToFile(options.file);
    if (!problem.empty()) {
        throw UsageError("cannot write the log file: " + problem +
                         "; give --log-file a path that can be written");
    }
}

}  // namespace command
