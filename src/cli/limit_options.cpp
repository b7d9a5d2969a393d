#include "cli/limit_options.h"

#include <CLI/CLI.hpp>
#include <sstream>

namespace command {

namespace {

constexpr double kShortest = 0.001;
constexpr double kLongestConnecting = 3600;
constexpr double kLongest = 7 * 86400;

/// "nan" is a number to the library, and in no range.
template <class Seconds>
CLI::Option* AddLimit(CLI::App& app, const std::string& name, Seconds& seconds, double longest,
                      const std::string& help) {
    const auto problem = [longest](const std::string& text) -> std::string {
        double value = 0;
        if (CLI::detail::lexical_cast(text, value) && value >= kShortest && value <= longest) {
            return "";
        }
        std::ostringstream range;
        range << text << " is not a number of seconds from " << kShortest << " to " << longest;
        return range.str();
    };
    return app.add_option(name, seconds, help)
        ->check(CLI::Validator(problem, ""))
        ->type_name("SECONDS");
}

}  // namespace

void AddConnectLimit(CLI::App& app, LimitOptions& limits) {
    AddLimit(app, "--connect-timeout", limits.connect, kLongestConnecting,
             "Seconds that connecting may take: name, addresses and TLS together")
        ->capture_default_str();
}

void AddRequestLimit(CLI::App& app, LimitOptions& limits) {
    AddSecondsOption(app, "--request-timeout", limits.request, "Seconds that one request may take")
        ->capture_default_str();
}

void AddReadingLimits(CLI::App& app, LimitOptions& limits) {
    AddRequestLimit(app, limits);
    AddSecondsOption(app, "--timeout", limits.host, "Seconds that the whole host may take")
        ->capture_default_str();
}

CLI::Option* AddSecondsOption(CLI::App& app, const std::string& name, double& seconds,
                              const std::string& help) {
    return AddLimit(app, name, seconds, kLongest, help);
}

CLI::Option* AddSecondsOption(CLI::App& app, const std::string& name,
                              std::optional<double>& seconds, const std::string& help) {
    return AddLimit(app, name, seconds, kLongest, help);
}

std::chrono::milliseconds Milliseconds(double seconds) {
    return std::chrono::ceil<std::chrono::milliseconds>(std::chrono::duration<double>(seconds));
}

}  // namespace command
