// Connections of this process, as the system knows them.
#pragma once

#include <cstddef>
#include <cstdint>

namespace support {

/// Open sockets of this process that are connected to the port.
std::size_t SocketsConnectedTo(std::uint16_t port);

}  // namespace support
