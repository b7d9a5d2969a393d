#include "client/session.h"

#include <boost/system/system_error.hpp>
#include <exception>

#include "Pegasus/Client/CIMClientException.h"
#include "client/reply_checks.h"
#include "explained.h"
#include "http/reply_reader.h"
#include "object_model/host_names.h"

namespace cimclient {

namespace {

using Pegasus::String;
using Pegasus::detail::IsHostNameOrIPv4;
using Pegasus::detail::IsIPv6;
using Zentar::FailureKind;
using Zentar::FailurePhase;

constexpr unsigned kHighestPort = 65535;

/// The host as a locator names it in messages.
String Locator(const std::string& host, unsigned port) {
    return String::FromUtf8(host + ":" + std::to_string(port));
}

/// What the client API throws for a connection that could not be made.
[[noreturn]] void ThrowCannotConnect(const TransportError& error, const String& locator) {
    const Explained explanation(error.kind, error.phase, error.reason);
    if (error.kind == FailureKind::kHostUnknown) {
        throw ExplainedAs<Pegasus::InvalidLocatorException>(explanation, locator);
    }
    throw ExplainedAs<Pegasus::CannotConnectException>(
        explanation, "Cannot connect to " + locator + ". Connection failed.");
}

/// The same for a request that was under way.
[[noreturn]] void ThrowInterrupted(const TransportError& error, bool is_receiving) {
    const FailurePhase phase = error.phase == FailurePhase::kReceiving && !is_receiving
                                   ? FailurePhase::kWaiting
                                   : error.phase;
    const Explained explanation(error.kind, phase, error.reason);
    if (error.kind == FailureKind::kCancelled) {
        throw ExplainedAs<Pegasus::Exception>(explanation, "cancelled");
    }
    throw ExplainedAs<Pegasus::ConnectionTimeoutException>(explanation);
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

void Session::Connect(const Address& address) {
    if (connection_) {
        throw Pegasus::AlreadyConnectedException();
    }
    Disconnect();
    host_ = address.host.empty() ? "localhost" : std::string(address.host);
    port_ = address.port;
    connect_timeout_ = timeout_;
    tls_ = address.tls != nullptr ? std::make_unique<TlsSettings>(*address.tls, settings_.trust)
                                  : nullptr;
    Open(FromNow(timeout_));
    credentials_ = Credentials(address.user, address.password);
    is_open_ = true;
}

void Session::Disconnect() {
    connection_.reset();
    credentials_ = Credentials();
    is_open_ = false;
    challenged_ = false;
}

Limit Session::FromNow(std::chrono::milliseconds time) const {
    return {std::chrono::steady_clock::now() + time, settings_.cancellation.get()};
}

void Session::Open(const Limit& limit) {
    connection_used_ = false;
    try {
        if (!IsHostNameOrIPv4(host_) && !IsIPv6(host_)) {
            throw TransportError{FailureKind::kHostUnknown, FailurePhase::kNone,
                                 "This cannot be the name of a host."};
        }
        if (port_ > kHighestPort) {
            throw TransportError{FailureKind::kUnreachable, FailurePhase::kNone,
                                 "There is no such port."};
        }
        connection_ = std::make_unique<Connection>(host_, port_, tls_.get(), limit);
    } catch (const TransportError& error) {
        ThrowCannotConnect(error, Locator(host_, port_));
    } catch (const boost::system::system_error& error) {
        // The process may have no descriptors left.
        ThrowCannotConnect({FailureKind::kUnreachable, FailurePhase::kNone, error.what()},
                           Locator(host_, port_));
    }
}

void Session::Reopen(const Limit& limit) {
    connection_.reset();
    const Limit own = FromNow(connect_timeout_);
    Open(own.deadline < limit.deadline ? own : limit);
}

bool Session::IsStale() {
    try {
        return connection_->IsStale();
    } catch (...) {
        connection_.reset();
        throw;
    }
}

/// A reply, and what reading its body threw.
struct Session::Answer {
    HttpReply reply;
    std::exception_ptr failure;
    /// Why the body of a reply without a result was left unread.
    std::optional<TransportError> interruption;
};

bool Session::Exchange(const Operation& operation, const BodyReader& read_body) {
    if (!is_open_) {
        throw Pegasus::NotConnectedException();
    }
    const Limit limit = FromNow(timeout_);
    if (!connection_ || IsStale()) {
        Reopen(limit);
    }
    Answer answer = SendUntilAnswered(operation, read_body, limit);
    if (answer.reply.status == 401 && !challenged_ && IsBasicChallenge(answer.reply)) {
        challenged_ = true;
        if (answer.interruption) {
            ThrowInterrupted(*answer.interruption, true);
        }
        if (!connection_) {
            Reopen(limit);
        }
        answer = SendUntilAnswered(operation, read_body, limit);
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
                                           const Limit& limit) {
    const bool may_send_again = connection_used_;
    if (auto answer = SendOnce(operation, read_body, limit)) {
        return std::move(*answer);
    }
    if (may_send_again) {
        Reopen(limit);
        if (auto answer = SendOnce(operation, read_body, limit)) {
            return std::move(*answer);
        }
    }
    throw ExplainedAs<Pegasus::CIMClientMalformedHTTPException>(
        {FailureKind::kUnreachable, FailurePhase::kWaiting,
         "The host closed the connection without an answer: " + end_reason_ + "."},
        "Connection closed by CIM Server.");
}

/// Nothing when the connection ended before any answer.
std::optional<Session::Answer> Session::SendOnce(const Operation& operation,
                                                 const BodyReader& read_body, const Limit& limit) {
    connection_used_ = true;
    ReplyReader reader([this, limit] { return connection_->Read(limit); },
                       settings_.max_reply_bytes);
    try {
        // A server may answer and close before it has taken the whole request.
        Send(operation, limit);
        Answer answer = Receive(reader, read_body);
        if (!answer.reply.keeps_alive) {
            connection_.reset();
        }
        return answer;
    } catch (const TransportError& error) {
        connection_.reset();
        ThrowInterrupted(error, reader.HasBegun());
    } catch (const Pegasus::Exception&) {
        end_reason_ = connection_->EndReason();
        connection_.reset();
        if (!reader.HasBegun()) {
            return std::nullopt;
        }
        throw;
    } catch (...) {
        connection_.reset();  // in the middle of an exchange, such as when memory has run out
        throw;
    }
}

bool Session::Send(const Operation& operation, const Limit& limit) {
    const std::string_view authorization =
        challenged_ ? std::string_view(credentials_.AuthorizationValue()) : std::string_view();
    const Zentar::Secret request = WriteHttpRequest(
        {HostField(host_, port_), operation.method, operation.name_space, authorization},
        operation.body);
    return connection_->Write(request.text(), limit);
}

namespace {

/// Another status than 200 is the result, whether or not its body can be read. Returns what
/// interrupted that.
std::optional<TransportError> SkipBody(ReplyReader& reader, HttpReply& reply) {
    try {
        reader.BeginBody(reply);
        while (!reader.NextPart(reply).empty()) {
        }
    } catch (const TransportError& error) {
        reply.keeps_alive = false;
        return error;
    } catch (const Pegasus::Exception&) {
        reply.keeps_alive = false;
    }
    return std::nullopt;
}

}  // namespace

/// What `read_body` finds wrong is kept for later; failures of the connection and of memory are
/// thrown on.
Session::Answer Session::Receive(ReplyReader& reader, const BodyReader& read_body) {
    Answer answer{reader.ReadHead(), nullptr, std::nullopt};
    if (answer.reply.status != 200) {
        answer.interruption = SkipBody(reader, answer.reply);
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
    } catch (const Pegasus::Exception&) {
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
