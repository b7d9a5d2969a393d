// One client's connection to a simulated host.
#pragma once

#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <thread>

#include "simhost/answer.h"
#include "simhost/http_message.h"
#include "simhost/journal.h"
#include "simhost/served_host.h"
#include "simhost/server.h"
#include "simhost/stream.h"

namespace simhost {

/// What the connections of a server, or of a fleet, share. Outlives them.
struct ServerContext {
    /// Throws std::system_error when OpenSSL refuses the options. A certificate has this name.
    ServerContext(ServerOptions server_options, const std::string& host_name,
                  Journal::Keeps journal_keeps);

    const ServerOptions options;
    const std::unique_ptr<TlsContext> tls;  ///< null: plain HTTP
    const std::string authorization;        ///< the header that lets in; empty: none needed
    Journal journal;
};

/// Serves on a thread of its own, until the client leaves or this is destroyed.
class Connection {
public:
    /// `number` is the journal's.
    Connection(ServerContext& server, ServedHost& host, std::size_t number, NativeSocket accepted);
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
    const HostVariant& Variant();
    Answer Challenge() const;
    bool IsLast(const HttpHead& head) const;
    void Send(const Answer& answer);

    ServerContext& server_;
    ServedHost& host_;
    const std::size_t number_;
    Stream stream_;
    std::optional<HostVariant> variant_;  ///< made when it is first asked for
    std::size_t requests_ = 0;
    std::string received_;  ///< arrived and not yet used
    std::atomic<bool> finished_ = false;
    std::thread thread_;
};

}  // namespace simhost
