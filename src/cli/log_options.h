// The options about the module's log.
#pragma once

#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace command {

struct LogOptions {
    std::optional<unsigned> level;  ///< nothing: 1 with a file, else nothing is logged
    std::string file;               ///< empty for standard error

    unsigned LevelOrDefault() const { return level.value_or(file.empty() ? 0 : 1); }
    bool GoesToStandardError() const { return file.empty() && LevelOrDefault() > 0; }
};

void AddLogOptions(CLI::App& app, LogOptions& options);

/// Sends the log where the options say, at their level. Throws UsageError when the file cannot be
/// written.
void OpenLog(const LogOptions& options);

}  // namespace command
