// When a network operation ends at the latest.
#pragma once

#include <chrono>

#include "common/cancel/cancellation.h"

namespace cimclient {

struct Limit {
    std::chrono::steady_clock::time_point deadline;
    /// Ends it earlier, from any thread; may be null. Outlives the operation.
    Zentar::Cancellation* cancellation = nullptr;

    bool IsCancelled() const { return cancellation != nullptr && cancellation->IsCancelled(); }
    bool IsPast() const { return std::chrono::steady_clock::now() >= deadline; }
};

}  // namespace cimclient
