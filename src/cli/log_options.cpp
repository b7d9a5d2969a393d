#include "cli/log_options.h"

#include <CLI/CLI.hpp>

#include "cli/command_error.h"
#include "common/log/log_control.h"

namespace command {

void AddLogOptions(CLI::App& app, LogOptions& options) {
    app.add_option("--log-level", options.level,
                   "0 logs nothing, 1 failures, 2 also missing properties, 3 also progress and "
                   "results, 4 everything")
        ->check(CLI::Range(0, 4).description(""))
        ->type_name("0..4")
        ->capture_default_str();
    app.add_option("--log-file", options.file, "File to append the log to [standard error]")
        ->type_name("FILE");
}

void OpenLog(const LogOptions& options) {
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
