#include "transport/connection.h"

#include <array>
#include <boost/asio/connect.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/stream.hpp>
#include <boost/asio/write.hpp>
#include <functional>
#include <optional>

#include "transport/tls_state.h"

namespace cimclient {

namespace {

namespace asio = boost::asio;
using asio::ip::tcp;
using ErrorCode = boost::system::error_code;
using TlsStream = asio::ssl::stream<tcp::socket&>;

constexpr std::size_t kReadBytes = 64UL * 1024;

bool IsAddress(const std::string& host) {
    ErrorCode error;
    asio::ip::make_address(host, error);
    return !error;
}

}  // namespace

class Connection::Stream {
    /// Does the same with the TLS stream or the bare socket.
    template <class Action>
    auto WithEither(Action action) {
        return tls_ ? action(*tls_) : action(socket_);
    }

public:
    explicit Stream(TlsSettings* settings) : settings_(settings) {}

    ~Stream() {
        if (tls_) {
            KeepSession();
        }
    }

    void Connect(const std::string& host, unsigned port, Deadline deadline) {
        ErrorCode error;
        tcp::resolver resolver(io_);
        const auto endpoints = resolver.resolve(host, std::to_string(port), error);
        if (error) {
            throw UnknownHost();
        }
        if (!Succeeds(deadline, [&](auto done) {
                asio::async_connect(
                    socket_, endpoints,
                    [done](ErrorCode failed, const tcp::endpoint&) { done(failed); });
            })) {
            throw ConnectFailed();
        }
        socket_.set_option(tcp::no_delay(true), error);
        if (settings_ != nullptr) {
            Handshake(host, deadline);
        }
    }

    bool Write(std::string_view bytes, Deadline deadline) {
        return WithEither([&](auto& stream) {
            return Finishes(deadline, [&](auto done) {
                asio::async_write(stream, asio::buffer(bytes),
                                  [done](ErrorCode failed, std::size_t) { done(failed); });
            });
        });
    }

    std::string_view Read(Deadline deadline) {
        StartReading();
        io_.restart();
        while (!arrived_) {
            if (io_.run_one_until(deadline) == 0) {
                throw TimedOut();
            }
        }
        const std::size_t count = *arrived_;
        arrived_.reset();
        reading_ = false;
        return {buffer_.data(), count};
    }

    bool IsStale() {
        StartReading();
        io_.restart();
        io_.poll();
        return arrived_.has_value();
    }

private:
    using Done = std::function<void(ErrorCode)>;

    /// Runs one operation to its end. Nothing when the time limit came first.
    template <class Start>
    std::optional<ErrorCode> Run(Deadline deadline, Start start) {
        std::optional<ErrorCode> result;
        start(Done([&result](ErrorCode error) { result = error; }));
        io_.restart();
        while (!result) {
            if (io_.run_one_until(deadline) == 0) {
                Abandon();
                return std::nullopt;
            }
        }
        return result;
    }

    /// Ends the operations under way, whose handlers speak of what is about to go.
    void Abandon() {
        ErrorCode ignored;
        socket_.close(ignored);
        io_.restart();
        io_.run();
    }

    template <class Start>
    bool Succeeds(Deadline deadline, Start start) {
        const auto error = Run(deadline, start);
        return error && !*error;
    }

    template <class Start>
    bool Finishes(Deadline deadline, Start start) {
        const auto error = Run(deadline, start);
        if (!error) {
            throw TimedOut();
        }
        return !*error;
    }

    void Handshake(const std::string& host, Deadline deadline) {
        TlsSettings::State& state = settings_->state();
        tls_.emplace(socket_, *state.context);
        if (!IsAddress(host)) {
            SSL_set_tlsext_host_name(tls_->native_handle(), host.c_str());
        }
        if (state.session) {
            SSL_set_session(tls_->native_handle(), state.session.get());
        }
        if (!Succeeds(deadline, [&](auto done) {
                tls_->async_handshake(asio::ssl::stream_base::client, done);
            })) {
            state.session.reset();
            tls_.reset();  // its session is not to be kept
            throw ConnectFailed();
        }
    }

    void KeepSession() {
        // OpenSSL would forbid to resume a session that ends without a farewell.
        SSL_set_shutdown(tls_->native_handle(), SSL_SENT_SHUTDOWN);
        SSL_SESSION* session = SSL_get1_session(tls_->native_handle());
        if (session != nullptr && SSL_SESSION_is_resumable(session) == 1) {
            settings_->state().session.reset(session);
        } else {
            SSL_SESSION_free(session);
        }
    }

    void StartReading() {
        if (reading_) {
            return;
        }
        reading_ = true;
        WithEither([this](auto& stream) {
            stream.async_read_some(
                asio::buffer(buffer_),
                [this](ErrorCode error, std::size_t count) { arrived_ = error ? 0 : count; });
        });
    }

    TlsSettings* settings_;
    asio::io_context io_{1};
    tcp::socket socket_{io_};
    std::optional<TlsStream> tls_;
    std::array<char, kReadBytes> buffer_;
    /// A read is under way, or its result has not been taken yet.
    bool reading_ = false;
    std::optional<std::size_t> arrived_;
};

Connection::Connection(const std::string& host, unsigned port, TlsSettings* tls, Deadline deadline)
    : stream_(std::make_unique<Stream>(tls)) {
    stream_->Connect(host, port, deadline);
}

Connection::~Connection() = default;

bool Connection::Write(std::string_view bytes, Deadline deadline) {
    return stream_->Write(bytes, deadline);
}

std::string_view Connection::Read(Deadline deadline) { return stream_->Read(deadline); }

bool Connection::IsStale() { return stream_->IsStale(); }

}  // namespace cimclient
