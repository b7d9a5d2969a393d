// Where simulated hosts wait for connections.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "simhost/server.h"
#include "simhost/stream.h"

namespace simhost {

/// Any number of ports of one address, served by one thread. Ports are added before Start().
class Listener {
public:
    /// Owns the socket from the call on, also when it throws, which ends that connection alone.
    using Accepted = std::function<void(NativeSocket)>;

    /// `options` say the address, and whether small segments are sent at once.
    explicit Listener(const ServerOptions& options);
    ~Listener();
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    /// Opens a port, 0 for any free one, and gives its number. Connections wait in the system's
    /// queue until Start(). Throws std::system_error when it cannot listen.
    std::uint16_t Listen(std::uint16_t port, Accepted accepted);
    /// The same for a port that refuses connections: it is taken, and nobody listens.
    std::uint16_t Refuse(std::uint16_t port);

    /// Calls `accepted` for each connection from now on, one at a time for all ports.
    void Start();
    /// Takes up, on the calling thread, what waits in the system's queues.
    void AcceptPending();

private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace simhost
