// What the kernel knows of a TCP connection.
#pragma once

#include <cstddef>

namespace bench {

/// Segments with data that have arrived on the connection so far.
std::size_t DataSegmentsReceived(int socket);

}  // namespace bench
