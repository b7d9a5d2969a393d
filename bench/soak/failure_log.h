// Why the module's operations fail, as it logs it.
#pragma once

#include <string>

namespace soak {

/// Keeps the failures that the module logs from everybody but TakeFailure. Before any thread.
void KeepFailures();

/// The first failure that this thread has logged since the last call; empty without any.
std::string TakeFailure();

}  // namespace soak
