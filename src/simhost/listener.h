// Where a simulated host waits for connections.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "simhost/server.h"
#include "simhost/stream.h"

namespace simhost {

/// Listens from construction to destruction, on a thread of its own.
class Listener {
public:
    /// Calls `accepted` for each connection, one at a time; it then owns the socket, also when it
    /// throws, which ends that connection alone. Throws std::system_error when it cannot listen.
    Listener(const ServerOptions& options, std::function<void(NativeSocket)> accepted);
    ~Listener();

    std::uint16_t port() const;
    /// Takes up, on the calling thread, what waits in the system's queue.
    void AcceptPending();

private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace simhost
