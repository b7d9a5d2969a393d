// The exchanges of one CIMClient with its server: connecting, authentication, and sending again.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "client/client_settings.h"
#include "client/credentials.h"
#include "http/reply.h"
#include "http/request_head.h"
#include "net/channel.h"
#include "net/tls_settings.h"

namespace cimclient {

/// A call of a CIM operation, ready to be sent as often as it takes.
struct MethodCall {
    const char* method;
    std::string name_space;
    std::string body;
};

/// A call that has to connect again does so within its own limit, and within that of Connect.
class Session {
public:
    /// Before Connect.
    void Configure(ClientSettings settings) { settings_ = std::move(settings); }

    void SetTimeout(unsigned milliseconds) { timeout_ = std::chrono::milliseconds(milliseconds); }
    unsigned Timeout() const { return static_cast<unsigned>(timeout_.count()); }

    /// Throws AlreadyConnectedException, InvalidLocatorException or CannotConnectException.
    void Connect(const Address& address);
    void Disconnect();

    /// Gives the next bytes of a reply's body, and an empty view at its end.
    using BodySource = std::function<std::string_view()>;
    using BodyReader = std::function<void(const BodySource&)>;

    /// Sends the call and has `read_body` read the reply's body while it arrives. Its BodyError is
    /// thrown as an exception once the whole reply has come and its head and trailers are in order.
    /// Connects again by itself when the server has closed the connection.
    void Exchange(const MethodCall& call, const BodyReader& read_body);

    const Credentials& credentials() const { return credentials_; }

private:
    Limit FromNow(std::chrono::milliseconds time) const;
    void Open(const Limit& limit);
    void Reopen(const Limit& limit);
    bool IsStale();
    struct Answer;
    Answer Ask(const MethodCall& call, const BodyReader& read_body);
    Answer SendUntilAnswered(const MethodCall& call, const BodyReader& read_body,
                             const Limit& limit);
    std::optional<Answer> SendOnce(const MethodCall& call, const BodyReader& read_body,
                                   const Limit& limit);
    bool Send(const MethodCall& call, const Limit& limit);
    static Answer Receive(class ReplyReader& reader, const BodyReader& read_body);

    ClientSettings settings_;
    std::chrono::milliseconds timeout_{20000};
    std::chrono::milliseconds connect_timeout_{20000};  ///< the one in force at Connect
    std::string host_;
    unsigned port_ = 0;
    Credentials credentials_;
    /// The server has asked for credentials; from then on they go with every request.
    bool challenged_ = false;
    /// Connected, or to be connected by the next operation.
    bool is_open_ = false;
    std::unique_ptr<TlsSettings> tls_;
    std::unique_ptr<Channel> channel_;
    bool connection_used_ = false;
    std::string end_reason_;  ///< why the last connection ended without an answer
};

}  // namespace cimclient
