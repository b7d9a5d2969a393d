// Stands in for the platform's Sleep: records the pauses and takes none.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

namespace support {

/// The pauses of this thread since the last call, in milliseconds.
std::vector<std::uint32_t> TakePauses();

/// Called at each pause of this thread until replaced by an empty function.
void DuringPauses(std::function<void()> action);

}  // namespace support
