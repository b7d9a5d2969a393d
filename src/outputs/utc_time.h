// Points in time of this machine's clock, in outputs.
#pragma once

#include <chrono>
#include <string>

namespace outputs {

/// "2026-11-22T05:00:15Z" (ISO 8601).
std::string UtcText(std::chrono::system_clock::time_point time);

}  // namespace outputs
