#include "client/session.h"

#include "Pegasus/Client/CIMClientException.h"
#include "client/reply_checks.h"
#include "http/reply_reader.h"
#include "object_model/host_names.h"

namespace cimclient {

namespace {

using Pegasus::String;
using Pegasus::detail::IsHostNameOrIPv4;
using Pegasus::detail::IsIPv6;

constexpr unsigned kHighestPort = 65535;

/// The host as a locator names it in messages.
String Locator(const std::string& host, unsigned port) {
    return String::FromUtf8(host + ":" + std::to_string(port));
}

std::string HostField(const std::string& host, unsigned port) {
    return (IsIPv6(host) ? "[" + host + "]" : host) + ":" + std::to_string(port);
}

bool IsBasicChallenge(const HttpReply& reply) {
    for (const std::string& challenge : reply.headers.All("WWW-Authenticate")) {
        if (OffersBasic(challenge)) {
            return true;
        }
    }
    return false;
}

}  // namespace

void Session::Connect(const String& host, unsigned port, const Pegasus::SSLContext* tls,
                      const String& user, const String& password) {
    if (connection_) {
        throw Pegasus::AlreadyConnectedException();
    }
    Disconnect();
    host_ = host.utf8().empty() ? "localhost" : std::string(host.utf8());
    port_ = port;
    tls_ = tls != nullptr ? std::make_unique<TlsSettings>(*tls) : nullptr;
    credentials_ = Credentials(user.utf8(), password.utf8());
    Open();
    is_open_ = true;
}

void Session::Disconnect() {
    connection_.reset();
    is_open_ = false;
    challenged_ = false;
}

void Session::Open() {
    connection_used_ = false;
    try {
        if (!IsHostNameOrIPv4(host_) && !IsIPv6(host_)) {
            throw UnknownHost();
        }
        if (port_ > kHighestPort) {
            throw ConnectFailed();
        }
        connection_ = std::make_unique<Connection>(host_, port_, tls_.get(), FromNow());
    } catch (const UnknownHost&) {
        throw Pegasus::InvalidLocatorException(Locator(host_, port_));
    } catch (const ConnectFailed&) {
        throw Pegasus::CannotConnectException("Cannot connect to " + Locator(host_, port_) +
                                              ". Connection failed.");
    }
}

void Session::Reopen() {
    connection_.reset();
    Open();
}

ByteBuffer Session::Exchange(const Operation& operation) {
    if (!is_open_) {
        throw Pegasus::NotConnectedException();
    }
    if (!connection_ || connection_->IsStale()) {
        Reopen();
    }
    Deadline deadline = FromNow();
    HttpReply reply = SendUntilAnswered(operation, deadline);
    if (reply.status == 401 && !challenged_ && IsBasicChallenge(reply)) {
        challenged_ = true;
        if (!connection_) {
            Reopen();
            deadline = FromNow();
        }
        reply = SendUntilAnswered(operation, deadline);
    }
    CheckStatus(reply);
    CheckHeaders(reply);
    CheckTrailers(reply);
    return std::move(reply.body);
}

/// Sends the operation, once more when a connection that had been used before turns out to be dead
/// and not one byte of an answer has arrived: reading twice changes nothing on the host.
HttpReply Session::SendUntilAnswered(const Operation& operation, Deadline& deadline) {
    const bool may_send_again = connection_used_;
    if (auto reply = SendOnce(operation, deadline)) {
        return std::move(*reply);
    }
    if (may_send_again) {
        Reopen();
        deadline = FromNow();
        if (auto reply = SendOnce(operation, deadline)) {
            return std::move(*reply);
        }
    }
    throw Pegasus::CIMClientMalformedHTTPException("Connection closed by CIM Server.");
}

/// Nothing when the connection ended before any answer.
std::optional<HttpReply> Session::SendOnce(const Operation& operation, Deadline deadline) {
    connection_used_ = true;
    ReplyReader reader([this, deadline] { return connection_->Read(deadline); });
    try {
        // A server may answer and close before it has taken the whole request.
        Send(operation, deadline);
        HttpReply reply = Receive(reader);
        if (!reply.keeps_alive) {
            connection_.reset();
        }
        return reply;
    } catch (const TimedOut&) {
        connection_.reset();
        throw Pegasus::ConnectionTimeoutException();
    } catch (const Pegasus::Exception&) {
        connection_.reset();
        if (!reader.HasBegun()) {
            return std::nullopt;
        }
        throw;
    }
}

bool Session::Send(const Operation& operation, Deadline deadline) {
    std::string request = WriteHead(
        {HostField(host_, port_), operation.method, operation.name_space, operation.body.size(),
         challenged_ ? credentials_.AuthorizationValue() : std::string()});
    request += operation.body;
    const bool sent = connection_->Write(request, deadline);
    Wipe(request);
    return sent;
}

/// Another status than 200 is the result, whether or not its body can be read.
HttpReply Session::Receive(ReplyReader& reader) {
    HttpReply reply = reader.ReadHead();
    if (reply.status == 200) {
        reader.ReadBody(reply);
        return reply;
    }
    try {
        reader.ReadBody(reply);
    } catch (const TimedOut&) {
        reply.keeps_alive = false;
    } catch (const Pegasus::Exception&) {
        reply.keeps_alive = false;
    }
    return reply;
}

}  // namespace cimclient
