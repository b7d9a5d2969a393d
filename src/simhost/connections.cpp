#include "simhost/connections.h"

namespace simhost {

void Connections::TakeUp(ServedHost& host, NativeSocket accepted) {
    connections_.remove_if([](const Connection& connection) { return connection.finished(); });
    if (connections_.size() >= most_) {
        Stream(accepted).Close();
        return;
    }
    const std::size_t number = context_.journal.Connected();
    try {
        connections_.emplace_back(context_, host, number, accepted);
    } catch (...) {
        context_.journal.Settled();
        throw;
    }
}

}  // namespace simhost
