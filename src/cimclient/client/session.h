// The exchanges of one CIMClient with its server: connecting, authentication, and sending again.
#pragma once

#include <functional>
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

    /// Gives the next bytes of a reply's body, and an empty view at its end.
    using BodySource = std::function<std::string_view()>;
    using BodyReader = std::function<void(const BodySource&)>;

    /// Sends the operation and has `read_body` read the reply's body while it arrives. What that
    /// throws is thrown on once the whole reply has come and its head and trailers are in order.
    /// Connects again by itself when the server has closed the connection. False when the reply
    /// ended before trailers in which an error could have stood.
    [[nodiscard]] bool Exchange(const Operation& operation, const BodyReader& read_body);

private:
    Deadline FromNow() const { return std::chrono::steady_clock::now() + timeout_; }
    void Open();
    void Reopen();
    struct Answer;
    Answer SendUntilAnswered(const Operation& operation, const BodyReader& read_body,
                             Deadline& deadline);
    std::optional<Answer> SendOnce(const Operation& operation, const BodyReader& read_body,
                                   Deadline deadline);
    bool Send(const Operation& operation, Deadline deadline);
    static Answer Receive(class ReplyReader& reader, const BodyReader& read_body);

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
