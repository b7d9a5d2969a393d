// Files and sockets of this process.
#pragma once

#include <cstddef>

namespace fault {

std::size_t OpenDescriptors();

}  // namespace fault
