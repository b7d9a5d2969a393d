// The options about the module's log.
#pragma once

#include <string>

namespace CLI {
class App;
}

namespace command {

struct LogOptions {
    unsigned level = 1;
    std::string file;  ///< empty for standard error
};

void AddLogOptions(CLI::App& app, LogOptions& options);

/// Sends the log where the options say. Throws UsageError when the file cannot be written.
void OpenLog(const LogOptions& options);

}  // namespace command
