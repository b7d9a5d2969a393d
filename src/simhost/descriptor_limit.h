// How many files and sockets this process may have open.
#pragma once

#include <cstddef>

namespace simhost {

/// Raises the limit (RLIMIT_NOFILE) to the hard one when it is below `wanted`. Gives the limit from
/// then on, which may still be too low.
std::size_t RaiseDescriptorLimit(std::size_t wanted);

}  // namespace simhost
