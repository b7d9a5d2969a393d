// Time limits and pauses of the module, cut short so that hosts that stall cost little.
#pragma once

#include <chrono>

namespace soak {

/// The longest that the module waits for one exchange from now on. Before any thread.
void LimitExchanges(std::chrono::milliseconds longest);

}  // namespace soak
