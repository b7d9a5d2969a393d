// Measurements in a process of their own.
#pragma once

#include <functional>

namespace bench {

/// Runs `measure` in a child process whose heap holds nothing that could be used again, and returns
/// what it returned: a program reads a host's inventory once, so the memory that it takes has to
/// come from the system. Throws std::runtime_error when the child fails.
double InFreshProcess(const std::function<double()>& measure);

}  // namespace bench
