// How far a run is, in words.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

#include "fleet/run.h"

namespace fleet {

/// "120 of 500 hosts, 3 not whole, 64 under way, 12.3/s, about 31 s left, slowest esx07:5989 (41
/// s)", as much of it as fits the columns of a terminal.
std::string ProgressText(const RunState& state, std::chrono::milliseconds elapsed,
                         std::size_t columns);

}  // namespace fleet
