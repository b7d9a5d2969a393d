#include "net/channel.h"

#include <algorithm>
#include <array>
#include <boost/asio/ssl/stream.hpp>
#include <boost/asio/write.hpp>
#include <functional>
#include <optional>

#include "net/certificate_check.h"
#include "net/event_wait.h"
#include "net/name_resolution.h"
#include "net/socket.h"
#include "net/tls_settings.h"

namespace cimclient {

namespace {

namespace asio = boost::asio;
using asio::ip::tcp;
using ErrorCode = boost::system::error_code;
using TlsStream = asio::ssl::stream<Socket&>;
using Zentar::FailureKind;
using Zentar::FailurePhase;

constexpr std::size_t kReadBytes = 64UL * 1024;

/// An address gets its share of the limit, and never less than a round trip may take.
constexpr auto kShortestAttempt = std::chrono::milliseconds(250);

/// Two or three reads take what servers send of their own accord after a handshake.
constexpr int kMostStepsWhileIdle = 4;

/// Bytes of TLS between two pieces of content: session tickets, key updates and empty records cost
/// this client time to take, and the host nothing.
constexpr std::uint64_t kMostWithoutContent = 128UL * 1024;

[[noreturn]] void Fail(FailureKind kind, FailurePhase phase, std::string reason) {
    throw NetworkError{kind, phase, std::move(reason)};
}

[[noreturn]] void FailAtLimit(WaitEnd end, FailurePhase phase) {
    if (end == WaitEnd::kCancelled) {
        Fail(FailureKind::kCancelled, phase, "cancelled");
    }
    Fail(FailureKind::kTimedOut, phase, "The time limit was reached.");
}

/// What an address may take when `left` addresses share the rest of the limit.
Limit ShareOf(const Limit& limit, std::size_t left) {
    const auto now = std::chrono::steady_clock::now();
    const auto share = std::max<std::chrono::steady_clock::duration>(
        (limit.deadline - now) / static_cast<std::int64_t>(left), kShortestAttempt);
    return {std::min(limit.deadline, now + share), limit.cancellation};
}

}  // namespace

class Channel::Stream {
    /// Does the same with the TLS stream or the bare socket.
    template <class Action>
    auto WithEither(Action action) {
        return tls_ ? action(*tls_) : action(socket_);
    }

public:
    Stream(TlsSettings* settings, Zentar::Cancellation* cancellation)
        : settings_(settings), wait_(io_, cancellation) {}

    ~Stream() {
        if (tls_) {
            KeepSession();
        }
    }

    void Connect(const std::string& host, unsigned port, const Limit& limit) {
        ConnectToAny(Resolve(host, port, limit), limit);
        ErrorCode ignored;
        socket_.tcp().set_option(tcp::no_delay(true), ignored);
        if (settings_ != nullptr) {
            Handshake(host, limit);
        }
    }

    bool Write(std::string_view bytes, const Limit& limit) {
        const auto error = WithEither([&](auto& stream) {
            return Run(limit, FailurePhase::kSending, [&](auto done) {
                asio::async_write(stream, asio::buffer(bytes),
                                  [done](ErrorCode failed, std::size_t) { done(failed); });
            });
        });
        return !error;
    }

    std::string_view Read(const Limit& limit) {
        StartReading();
        const std::uint64_t before = TlsBytesTaken();
        const auto is_idle_talk = [&] { return TlsBytesTaken() - before > kMostWithoutContent; };
        const WaitEnd end =
            wait_.Until([&] { return arrived_.has_value() || is_idle_talk(); }, limit);
        if (end != WaitEnd::kDone) {
            FailAtLimit(end, FailurePhase::kReceiving);
        }
        if (!arrived_) {
            HangUp("records of TLS without content");
        }
        const std::size_t count = *arrived_;
        arrived_.reset();
        reading_ = false;
        return {buffer_.data(), count};
    }

    const std::string& EndReason() const { return end_reason_; }

    bool IsStale() {
        StartReading();
        return !wait_.Poll(kMostStepsWhileIdle) || arrived_.has_value();
    }

    X509* Certificate() {
        return tls_ ? SSL_get0_peer_certificate(tls_->native_handle()) : nullptr;
    }

private:
    using Done = std::function<void(ErrorCode)>;

    /// Runs one operation to its end. Throws at the limit, after which nothing is under way.
    template <class Start>
    ErrorCode Run(const Limit& limit, FailurePhase phase, Start start) {
        std::optional<ErrorCode> result;
        start(Done([&result](ErrorCode error) { result = error; }));
        const auto is_done = [&result] { return result.has_value(); };
        const WaitEnd end = wait_.Until(is_done, limit);
        if (end != WaitEnd::kDone) {
            // Its handler uses what is about to go.
            ErrorCode ignored;
            socket_.tcp().close(ignored);
            wait_.Drain(is_done);
            FailAtLimit(end, phase);
        }
        return *result;
    }

    void ConnectToAny(const std::vector<tcp::endpoint>& endpoints, const Limit& limit) {
        std::optional<NetworkError> problem;
        for (std::size_t i = 0; i < endpoints.size(); ++i) {
            problem = ConnectTo(endpoints[i], ShareOf(limit, endpoints.size() - i));
            if (!problem) {
                return;
            }
            if (problem->kind == FailureKind::kCancelled || limit.IsPast()) {
                break;
            }
        }
        throw *problem;
    }

    std::optional<NetworkError> ConnectTo(const tcp::endpoint& endpoint, const Limit& limit) {
        ErrorCode error;
        socket_.tcp().close(error);
        socket_.Open(endpoint.protocol(), error);
        try {
            if (!error) {
                error = Run(limit, FailurePhase::kConnecting,
                            [&](auto done) { socket_.tcp().async_connect(endpoint, done); });
            }
        } catch (const NetworkError& at_limit) {
            return at_limit;
        }
        if (error) {
            return NetworkError{FailureKind::kUnreachable, FailurePhase::kConnecting,
                                error.message()};
        }
        return std::nullopt;
    }

    void Handshake(const std::string& host, const Limit& limit) {
        tls_.emplace(socket_, *settings_->context);
        SSL* const ssl = tls_->native_handle();
        ExpectHost(ssl, host, settings_->tests_host_name);
        if (settings_->session) {
            SSL_set_session(ssl, settings_->session.get());
        }
        try {
            const ErrorCode error = Run(limit, FailurePhase::kTlsHandshake, [&](auto done) {
                tls_->async_handshake(asio::ssl::stream_base::client, done);
            });
            CheckHandshake(ssl, error, settings_->fingerprints);
        } catch (...) {
            settings_->session.reset();
            tls_.reset();  // its session is not to be kept
            throw;
        }
    }

    void KeepSession() {
        // OpenSSL would forbid to resume a session that ends without close_notify.
        SSL_set_shutdown(tls_->native_handle(), SSL_SENT_SHUTDOWN);
        SSL_SESSION* session = SSL_get1_session(tls_->native_handle());
        if (session != nullptr && SSL_SESSION_is_resumable(session) == 1) {
            settings_->session.reset(session);
        } else {
            SSL_SESSION_free(session);
        }
    }

    /// What has come and been decrypted, 0 without TLS.
    std::uint64_t TlsBytesTaken() {
        return tls_ ? BIO_number_read(SSL_get_rbio(tls_->native_handle())) : 0;
    }

    /// Ends the read that is under way.
    void HangUp(const char* reason) {
        ErrorCode ignored;
        socket_.tcp().close(ignored);
        wait_.Drain([this] { return arrived_.has_value(); });
        arrived_ = 0;
        end_reason_ = reason;
    }

    void StartReading() {
        if (reading_) {
            return;
        }
        reading_ = true;
        WithEither([this](auto& stream) {
            stream.async_read_some(asio::buffer(buffer_),
                                   [this](ErrorCode error, std::size_t count) {
                                       arrived_ = error ? 0 : count;
                                       if (error) {
                                           end_reason_ = error.message();
                                       }
                                   });
        });
    }

    TlsSettings* settings_;
    asio::io_context io_{1};
    EventWait wait_;
    Socket socket_{io_};
    std::optional<TlsStream> tls_;
    std::array<char, kReadBytes> buffer_;
    /// A read is under way, or its result has not been taken yet.
    bool reading_ = false;
    std::optional<std::size_t> arrived_;
    std::string end_reason_;
};

Channel::Channel(const std::string& host, unsigned port, TlsSettings* tls, const Limit& limit)
    : stream_(std::make_unique<Stream>(tls, limit.cancellation)) {
    stream_->Connect(host, port, limit);
}

Channel::~Channel() = default;

bool Channel::Write(std::string_view bytes, const Limit& limit) {
    return stream_->Write(bytes, limit);
}

std::string_view Channel::Read(const Limit& limit) { return stream_->Read(limit); }

const std::string& Channel::EndReason() const { return stream_->EndReason(); }

bool Channel::IsStale() { return stream_->IsStale(); }

X509* Channel::Certificate() const { return stream_->Certificate(); }

}  // namespace cimclient
