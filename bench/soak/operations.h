// The module's operations, each with what it read as texts that can be compared.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "module/exsi/kalvex.h"

namespace soak {

/// What an operation returned, and each statement about the host that it made.
struct Reading {
    int result = 0;
    std::vector<std::string> statements;
};

struct Operation {
    const char* name;
    std::function<Reading(Zentar::Agentless::Kalvex&)> read;
};

/// All of them, in an order in which they can be called on one object.
std::span<const Operation> Operations();

}  // namespace soak
