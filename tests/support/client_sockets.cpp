#include "support/client_sockets.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <filesystem>
#include <string>

namespace support {

namespace {

bool IsConnectedTo(std::uint16_t port, int descriptor) {
    sockaddr_in peer{};
    socklen_t size = sizeof peer;
    return ::getpeername(descriptor, reinterpret_cast<sockaddr*>(&peer), &size) == 0 &&
           peer.sin_family == AF_INET && ntohs(peer.sin_port) == port;
}

}  // namespace

std::size_t SocketsConnectedTo(std::uint16_t port) {
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        count += IsConnectedTo(port, std::stoi(entry.path().filename())) ? 1 : 0;
    }
    return count;
}

}  // namespace support
