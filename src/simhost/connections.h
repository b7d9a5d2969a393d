// The connections under way to the hosts of one listener.
#pragma once

#include <cstddef>
#include <list>

#include "simhost/connection.h"

namespace simhost {

/// Used by one thread at a time. Destruction ends all connections at once.
class Connections {
public:
    /// Connections beyond `most` are closed at once.
    Connections(ServerContext& context, std::size_t most) : context_(context), most_(most) {}

    /// Serves a connection to the host, which must outlive it. Owns the socket, also when it
    /// throws for lack of threads or descriptors.
    void TakeUp(ServedHost& host, NativeSocket accepted);

private:
    ServerContext& context_;
    const std::size_t most_;
    std::list<Connection> connections_;
};

}  // namespace simhost
