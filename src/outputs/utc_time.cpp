#include "outputs/utc_time.h"

#include <ctime>

namespace outputs {

std::string UtcText(std::chrono::system_clock::time_point time) {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
    std::tm utc{};
    gmtime_r(&seconds, &utc);
    char text[64];
    const std::size_t size = std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &utc);
    return {text, size};
}

}  // namespace outputs
