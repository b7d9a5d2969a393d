// The exchanges of one CIMClient with its server: connecting, authentication, and sending again.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "Pegasus/Common/SSLContext.h"
#include "client/credentials.h"
#include "http/reply.h"
#include "http/request_head.h"
#include "transport/connection.h"

namespace cimclient {

/// One operation, ready to be sent as often as it takes.
struct Operation {
    const char* method;
    std::string name_space;
    std::string body;
};

class Session {
public:
    void SetTimeout(unsigned milliseconds) { timeout_ = std::chrono::milliseconds(milliseconds); }
    unsigned Timeout() const { return static_cast<unsigned>(timeout_.count()); }

    /// Throws AlreadyConnectedException, InvalidLocatorException or CannotConnectException.
    void Connect(const Pegasus::String& host, unsigned port, const Pegasus::SSLContext* tls,
                 const Pegasus::String& user, const Pegasus::String& password);
    void Disconnect();

    /// Sends the operation and returns the body of the reply, whose head and trailers are in order.
    /// Connects again by itself when the server has closed the connection.
    ByteBuffer Exchange(const Operation& operation);

private:
    Deadline FromNow() const { return std::chrono::steady_clock::now() + timeout_; }
    void Open();
    void Reopen();
    HttpReply SendUntilAnswered(const Operation& operation, Deadline& deadline);
    std::optional<HttpReply> SendOnce(const Operation& operation, Deadline deadline);
    bool Send(const Operation& operation, Deadline deadline);
    HttpReply Receive(class ReplyReader& reader);

    std::chrono::milliseconds timeout_{20000};
    std::string host_;
    unsigned port_ = 0;
    Credentials credentials_;
    /// The server has asked for credentials; from then on they go with every request.
    bool challenged_ = false;
    /// Connected, or to be connected by the next operation.
    bool is_open_ = false;
    std::unique_ptr<TlsSettings> tls_;
    std::unique_ptr<Connection> connection_;
    bool connection_used_ = false;
};

}  // namespace cimclient
