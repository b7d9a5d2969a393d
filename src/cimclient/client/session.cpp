#include "client/session.h"

#include <boost/system/system_error.hpp>
#include <exception>

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

Pegasus::CannotConnectException CannotConnect(const String& locator) {
    return Pegasus::CannotConnectException("Cannot connect to " + locator + ". Connection failed.");
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
    Open();
    credentials_ = Credentials(user.utf8(), password.utf8());
    is_open_ = true;
}

void Session::Disconnect() {
    connection_.reset();
    credentials_ = Credentials();
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
        throw CannotConnect(Locator(host_, port_));
    } catch (const boost::system::system_error&) {
        throw CannotConnect(Locator(host_, port_));  // the process may have no descriptors left
    }
}

void Session::Reopen() {
    connection_.reset();
    Open();
}

/// A reply, and what reading its body threw.
struct Session::Answer {
    HttpReply reply;
    std::exception_ptr failure;
};

bool Session::Exchange(const Operation& operation, const BodyReader& read_body) {
    if (!is_open_) {
        throw Pegasus::NotConnectedException();
    }
    if (!connection_ || connection_->IsStale()) {
        Reopen();
    }
    Deadline deadline = FromNow();
    Answer answer = SendUntilAnswered(operation, read_body, deadline);
    if (answer.reply.status == 401 && !challenged_ && IsBasicChallenge(answer.reply)) {
        challenged_ = true;
        if (!connection_) {
            Reopen();
            deadline = FromNow();
        }
        answer = SendUntilAnswered(operation, read_body, deadline);
    }
    CheckStatus(answer.reply);
    CheckHeaders(answer.reply);
    CheckTrailers(answer.reply);
    if (answer.failure) {
        std::rethrow_exception(answer.failure);
    }
    return answer.reply.has_last_chunk;
}

/// Sends the operation, once more when a connection that had been used before turns out to be dead
/// and not one byte of an answer has arrived: reading twice changes nothing on the host.
Session::Answer Session::SendUntilAnswered(const Operation& operation, const BodyReader& read_body,
                                           Deadline& deadline) {
    const bool may_send_again = connection_used_;
    if (auto answer = SendOnce(operation, read_body, deadline)) {
        return std::move(*answer);
    }
    if (may_send_again) {
        Reopen();
        deadline = FromNow();
        if (auto answer = SendOnce(operation, read_body, deadline)) {
            return std::move(*answer);
        }
    }
    throw Pegasus::CIMClientMalformedHTTPException("Connection closed by CIM Server.");
}

/// Nothing when the connection ended before any answer.
std::optional<Session::Answer> Session::SendOnce(const Operation& operation,
                                                 const BodyReader& read_body, Deadline deadline) {
    connection_used_ = true;
    ReplyReader reader([this, deadline] { return connection_->Read(deadline); });
    try {
        // A server may answer and close before it has taken the whole request.
        Send(operation, deadline);
        Answer answer = Receive(reader, read_body);
        if (!answer.reply.keeps_alive) {
            connection_.reset();
        }
        return answer;
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

namespace {

struct WipeAtEnd {
    ~WipeAtEnd() { Wipe(text); }
    std::string& text;
};

}  // namespace

bool Session::Send(const Operation& operation, Deadline deadline) {
    const std::string_view authorization =
        challenged_ ? credentials_.AuthorizationValue() : std::string_view();
    std::string request = WriteHttpRequest(
        {HostField(host_, port_), operation.method, operation.name_space, authorization},
        operation.body);
    const WipeAtEnd wipe{request};
    return connection_->Write(request, deadline);
}

namespace {

/// Another status than 200 is the result, whether or not its body can be read.
void SkipBody(ReplyReader& reader, HttpReply& reply) {
    try {
        reader.BeginBody(reply);
        while (!reader.NextPart(reply).empty()) {
        }
    } catch (const TimedOut&) {
        reply.keeps_alive = false;
    } catch (const Pegasus::Exception&) {
        reply.keeps_alive = false;
    }
}

}  // namespace

/// What `read_body` throws by itself is kept for later; failures of the connection are thrown on.
Session::Answer Session::Receive(ReplyReader& reader, const BodyReader& read_body) {
    Answer answer{reader.ReadHead(), nullptr};
    if (answer.reply.status != 200) {
        SkipBody(reader, answer.reply);
        return answer;
    }
    reader.BeginBody(answer.reply);
    bool broken = false;
    const BodySource next = [&] {
        broken = true;
        const std::string_view part = reader.NextPart(answer.reply);
        broken = false;
        return part;
    };
    try {
        read_body(next);
    } catch (...) {
        if (broken) {
            throw;
        }
        answer.failure = std::current_exception();
    }
    while (!next().empty()) {
        // The rest is of no interest, but the next reply comes after it.
    }
    return answer;
}

}  // namespace cimclient
