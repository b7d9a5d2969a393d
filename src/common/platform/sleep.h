// The pause between connection attempts.
#pragma once

#include <cstdint>

namespace Zentar {

/// Blocks the calling thread for the given time. A program may link its own definition in place of
/// this one, as the tests do.
void Sleep(std::uint32_t milliseconds);

}  // namespace Zentar
