// What ends the module's calls, each with how long it takes to.
#pragma once

#include <chrono>
#include <vector>

#include "time_limits/stalls.h"

namespace time_limits {

using Milliseconds = std::chrono::duration<double, std::milli>;

struct Limit {
    const char* name;
    /// Whether it ends what such hosts let the module do.
    bool (*applies_to)(Moment moment);
    /// How long the module's calls took in all. Throws std::logic_error when they ended for another
    /// reason, or in another phase than the stall's.
    Milliseconds (*measure)(const Stall& stall, milliseconds limit);
};

const std::vector<Limit>& Limits();

}  // namespace time_limits
