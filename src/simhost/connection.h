// One client's connection to a simulated host.
#pragma once

#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <thread>

#include "simhost/answer.h"
#include "simhost/fault_schedule.h"
#include "simhost/http_message.h"
#include "simhost/journal.h"
#include "simhost/model.h"
#include "simhost/server.h"
#include "simhost/stream.h"

namespace simhost {

/// What a server's connections share. Outlives them.
struct ServerContext {
    HostDescription description;
    ServerOptions options;
    std::unique_ptr<TlsContext> tls;  ///< null: plain HTTP
    std::string authorization;        ///< the header that lets in; empty: none needed
    Journal journal;
    FaultSchedule faults;
};

/// Serves on a thread of its own, until the client leaves or this is destroyed.
class Connection {
public:
    /// `number` is the journal's.
    Connection(ServerContext& server, std::size_t number, NativeSocket accepted);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    bool finished() const { return finished_; }

private:
    void Serve();
    bool Open();
    void ServeRequests();
    /// Gives false when the connection is over.
    bool ServeRequest(const HttpHead& head);
    std::optional<HttpHead> ReceiveHead();
    std::string ReceiveBody(std::size_t length);
    bool Authorised(const HttpHead& head) const;
    Answer Challenge() const;
    bool IsLast(const HttpHead& head) const;
    void Send(const Answer& answer);

    ServerContext& server_;
    const std::size_t number_;
    Stream stream_;
    std::size_t requests_ = 0;
    std::string received_;  ///< arrived and not yet used
    std::atomic<bool> finished_ = false;
    std::thread thread_;
};

}  // namespace simhost
