// The options about how long reading a host may take.
#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace CLI {
class App;
class Option;
}

namespace command {

/// Seconds.
struct LimitOptions {
    double connect = 5;
    double request = 60;
    double host = 600;
};

/// Adds --connect-timeout alone.
void AddConnectLimit(CLI::App& app, LimitOptions& limits);

/// Adds --request-timeout alone.
void AddRequestLimit(CLI::App& app, LimitOptions& limits);

/// Adds --request-timeout and --timeout.
void AddReadingLimits(CLI::App& app, LimitOptions& limits);

/// Adds an option in seconds, of at most a week.
CLI::Option* AddSecondsOption(CLI::App& app, const std::string& name, double& seconds,
                              const std::string& help);
CLI::Option* AddSecondsOption(CLI::App& app, const std::string& name,
                              std::optional<double>& seconds, const std::string& help);

/// Rounded up, so that no time becomes none.
std::chrono::milliseconds Milliseconds(double seconds);

}  // namespace command
