#include "client/session.h"

#include <boost/system/system_error.hpp>
#include <exception>

#include "Pegasus/Common/Exception.h"
#include "client/failures.h"
#include "client/reply_checks.h"
#include "http/reply_reader.h"
#include "object_model/host_names.h"
#include "reply_errors.h"

namespace cimclient {

namespace {

using Pegasus::detail::IsHostNameOrIPv4;
using Pegasus::detail::IsIPv6;
using Zentar::FailureKind;
using Zentar::FailurePhase;

constexpr unsigned kHighestPort = 65535;

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
    if (channel_) {
        throw Pegasus::AlreadyConnectedException();
    }
    Disconnect();
    host_ = address.host.empty() ? "localhost" : std::string(address.host);
    port_ = address.port;
    connect_timeout_ = timeout_;
    tls_ = address.has_tls ? std::make_unique<TlsSettings>(settings_.trust) : nullptr;
    Open(FromNow(timeout_));
    credentials_ = Credentials(address.user, address.password);
    is_open_ = true;
}

void Session::Disconnect() {
    channel_.reset();
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
            throw NetworkError{FailureKind::kHostUnknown, FailurePhase::kNone,
                               "This cannot be the name of a host."};
        }
        if (port_ > kHighestPort) {
            throw NetworkError{FailureKind::kUnreachable, FailurePhase::kNone,
                               "There is no such port."};
        }
        channel_ = std::make_unique<Channel>(host_, port_, tls_.get(), limit);
    } catch (const NetworkError& error) {
        ThrowCannotConnect(error, host_, port_);
    } catch (const boost::system::system_error& error) {
        // The process may have no descriptors left.
        ThrowCannotConnect({FailureKind::kUnreachable, FailurePhase::kNone, error.what()}, host_,
                           port_);
    }
}

void Session::Reopen(const Limit& limit) {
    channel_.reset();
    const Limit own = FromNow(connect_timeout_);
    Open(own.deadline < limit.deadline ? own : limit);
}

bool Session::IsStale() {
    try {
        return channel_->IsStale();
    } catch (...) {
        channel_.reset();
        throw;
    }
}

/// A reply, and what reading its body threw.
struct Session::Answer {
    HttpReply reply;
    std::exception_ptr failure;
    /// Why the body of a reply without a result was left unread.
    std::optional<NetworkError> interruption;
};

void Session::Exchange(const MethodCall& call, const BodyReader& read_body) {
    if (!is_open_) {
        throw Pegasus::NotConnectedException();
    }
    WithExceptions([&] {
        const Answer answer = Ask(call, read_body);
        CheckStatus(answer.reply);
        CheckHeaders(answer.reply);
        CheckTrailers(answer.reply);
        if (answer.failure) {
            std::rethrow_exception(answer.failure);
        }
        // An error may have stood in the trailers that never came.
        if (!answer.reply.has_last_chunk) {
            throw HttpError{"Connection closed by CIM Server."};
        }
    });
}

/// Answers a challenge, which comes once.
Session::Answer Session::Ask(const MethodCall& call, const BodyReader& read_body) {
    const Limit limit = FromNow(timeout_);
    if (!channel_ || IsStale()) {
        Reopen(limit);
    }
    Answer answer = SendUntilAnswered(call, read_body, limit);
    if (answer.reply.status == 401 && !challenged_ && IsBasicChallenge(answer.reply)) {
        challenged_ = true;
        if (answer.interruption) {
            ThrowInterrupted(*answer.interruption, true);
        }
        if (!channel_) {
            Reopen(limit);
        }
        answer = SendUntilAnswered(call, read_body, limit);
    }
    return answer;
}

/// Sends the call, once more when a connection that had been used before turns out to be dead
/// and not one byte of an answer has arrived: reading twice changes nothing on the host.
Session::Answer Session::SendUntilAnswered(const MethodCall& call, const BodyReader& read_body,
                                           const Limit& limit) {
    const bool may_send_again = connection_used_;
    if (auto answer = SendOnce(call, read_body, limit)) {
        return std::move(*answer);
    }
    if (may_send_again) {
        Reopen(limit);
        if (auto answer = SendOnce(call, read_body, limit)) {
            return std::move(*answer);
        }
    }
    ThrowUnanswered(end_reason_);
}

/// Nothing when the connection ended before any answer.
std::optional<Session::Answer> Session::SendOnce(const MethodCall& call,
                                                 const BodyReader& read_body, const Limit& limit) {
    connection_used_ = true;
    ReplyReader reader([this, limit] { return channel_->Read(limit); }, settings_.max_reply_bytes);
    try {
        // A server may answer and close before it has taken the whole request.
        Send(call, limit);
        Answer answer = Receive(reader, read_body);
        if (!answer.reply.keeps_alive) {
            channel_.reset();
        }
        return answer;
    } catch (const NetworkError& error) {
        channel_.reset();
        ThrowInterrupted(error, reader.HasBegun());
    } catch (const HttpError&) {
        end_reason_ = channel_->EndReason();
        channel_.reset();
        if (!reader.HasBegun()) {
            return std::nullopt;
        }
        throw;
    } catch (...) {
        channel_.reset();  // in the middle of an exchange, such as when memory has run out
        throw;
    }
}

bool Session::Send(const MethodCall& call, const Limit& limit) {
    const std::string_view authorization =
        challenged_ ? std::string_view(credentials_.AuthorizationValue()) : std::string_view();
    const Zentar::Secret request = WriteHttpRequest(
        {HostField(host_, port_), call.method, call.name_space, authorization}, call.body);
    return channel_->Write(request.text(), limit);
}

namespace {

/// Another status than 200 is the result, whether or not its body can be read. Returns what
/// interrupted that.
std::optional<NetworkError> SkipBody(ReplyReader& reader, HttpReply& reply) {
    try {
        reader.BeginBody(reply);
        while (!reader.NextPart(reply).empty()) {
        }
    } catch (const NetworkError& error) {
        reply.keeps_alive = false;
        return error;
    } catch (const HttpError&) {
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
    const BodySource next = [&] { return reader.NextPart(answer.reply); };
    try {
        read_body(next);
    } catch (const BodyError&) {
        answer.failure = std::current_exception();
    }
    while (!next().empty()) {
        // The rest is of no interest, but the next reply comes after it.
    }
    return answer;
}

}  // namespace cimclient
