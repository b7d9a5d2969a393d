// The options about how long reading a host may take.
#pragma once

#include <chrono>
#include <string>

namespace CLI {
class App;
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

/// Adds --request-timeout and --timeout.
void AddReadingLimits(CLI::App& app, LimitOptions& limits);

/// Rounded up, so that no time becomes none.
std::chrono::milliseconds Milliseconds(double seconds);

}  // namespace command
