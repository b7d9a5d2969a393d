#include "simhost/stream.h"

#include <unistd.h>

#include <array>
#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/stream.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/write.hpp>
#include <optional>

namespace simhost {

namespace asio = boost::asio;
using boost::system::error_code;

/// Operations are started asynchronously and run on the calling thread, so that each has a time
/// limit and Stop() reaches it.
class Stream::Impl {
public:
    using Socket = asio::ip::tcp::socket;

    struct Outcome {
        bool done = false;
        error_code error;
        std::size_t size = 0;
    };

    explicit Impl(NativeSocket accepted)
        : work(io.get_executor()),
          socket(io, accepted.ip_v6 ? asio::ip::tcp::v6() : asio::ip::tcp::v4(), accepted.handle) {}

    /// Runs until the operation is done or the deadline is over.
    void RunUntil(const std::shared_ptr<Outcome>& outcome, Clock::time_point deadline);
    /// Runs until the operation is done; throws when it failed.
    std::size_t Complete(const std::shared_ptr<Outcome>& outcome);

    bool SpeaksTls13() { return tls && SSL_version(tls->native_handle()) == TLS1_3_VERSION; }
    /// Sends what OpenSSL has been asked to send after the handshake.
    void Flush();

    asio::io_context io{1};
    asio::executor_work_guard<asio::io_context::executor_type> work;
    Socket socket;
    std::optional<asio::ssl::stream<Socket&>> tls;
    std::array<char, 16384> buffer;
};

namespace {

/// How long the peer's answer to our close_notify is waited for.
constexpr std::chrono::milliseconds kCloseNotifyLimit{100};

/// Timers wake a sleeping processor this late at most, as a rule. So much of a pause is waited
/// awake, because what is measured over a simulated link is not to contain its lateness.
constexpr std::chrono::microseconds kLateness{500};

/// A handler that outlives the call that started its operation.
auto StoreIn(std::shared_ptr<Stream::Impl::Outcome> outcome) {
    return [outcome](const error_code& error, std::size_t size = 0) {
        outcome->done = true;
        outcome->error = error;
        outcome->size = size;
    };
}

}  // namespace

void Stream::Impl::RunUntil(const std::shared_ptr<Outcome>& outcome, Clock::time_point deadline) {
    while (!outcome->done && !io.stopped() && Clock::now() < deadline) {
        io.run_one_until(deadline);
    }
    if (io.stopped()) {
        throw ConnectionEnded();
    }
}

std::size_t Stream::Impl::Complete(const std::shared_ptr<Outcome>& outcome) {
    RunUntil(outcome, Clock::time_point::max());
    if (outcome->error) {
        throw ConnectionEnded();
    }
    return outcome->size;
}

void Stream::Impl::Flush() {
    const auto outcome = std::make_shared<Outcome>();
    tls->async_handshake(asio::ssl::stream_base::server, StoreIn(outcome));
    Complete(outcome);
}

Stream::Stream(NativeSocket accepted) try : impl_(std::make_unique<Impl>(accepted)) {
} catch (...) {
    ::close(accepted.handle);
}

Stream::~Stream() = default;

bool Stream::StartTls(TlsContext& context) {
    impl_->tls.emplace(impl_->socket, context.asio());
    const auto outcome = std::make_shared<Impl::Outcome>();
    impl_->tls->async_handshake(asio::ssl::stream_base::server, StoreIn(outcome));
    impl_->Complete(outcome);
    return SSL_session_reused(impl_->tls->native_handle()) == 1;
}

std::string_view Stream::Read(Duration limit) {
    const auto deadline =
        limit == Duration::zero() ? Clock::time_point::max() : Clock::now() + limit;
    const auto outcome = std::make_shared<Impl::Outcome>();
    const auto buffer = asio::buffer(impl_->buffer);
    if (impl_->tls) {
        impl_->tls->async_read_some(buffer, StoreIn(outcome));
    } else {
        impl_->socket.async_read_some(buffer, StoreIn(outcome));
    }
    impl_->RunUntil(outcome, deadline);
    if (!outcome->done) {
        error_code ignored;
        impl_->socket.cancel(ignored);
        impl_->RunUntil(outcome, Clock::time_point::max());
        return {};
    }
    return {impl_->buffer.data(), impl_->Complete(outcome)};
}

void Stream::Write(std::string_view bytes) {
    const auto outcome = std::make_shared<Impl::Outcome>();
    const auto buffer = asio::buffer(bytes.data(), bytes.size());
    if (impl_->tls) {
        asio::async_write(*impl_->tls, buffer, StoreIn(outcome));
    } else {
        asio::async_write(impl_->socket, buffer, StoreIn(outcome));
    }
    impl_->Complete(outcome);
}

bool Stream::SendTicket() {
    if (!impl_->SpeaksTls13() || SSL_new_session_ticket(impl_->tls->native_handle()) != 1) {
        return false;
    }
    impl_->Flush();
    return true;
}

bool Stream::SendKeyUpdate() {
    if (!impl_->SpeaksTls13() ||
        SSL_key_update(impl_->tls->native_handle(), SSL_KEY_UPDATE_NOT_REQUESTED) != 1) {
        return false;
    }
    impl_->Flush();
    return true;
}

void Stream::Pause(Duration duration) { PauseUntil(Clock::now() + duration); }

void Stream::PauseUntil(Clock::time_point end) {
    asio::steady_timer timer(impl_->io, end - kLateness);
    const auto outcome = std::make_shared<Impl::Outcome>();
    timer.async_wait(StoreIn(outcome));
    impl_->Complete(outcome);
    while (Clock::now() < end) {
    }
}

void Stream::AwaitPeersEnd() {
    for (;;) {
        Read();
    }
}

void Stream::CloseProperly() {
    if (impl_->tls) {
        const auto outcome = std::make_shared<Impl::Outcome>();
        impl_->tls->async_shutdown(StoreIn(outcome));
        try {
            impl_->RunUntil(outcome, Clock::now() + kCloseNotifyLimit);
        } catch (const ConnectionEnded&) {
        }
    }
    Close();
}

void Stream::Close() {
    error_code ignored;
    impl_->socket.shutdown(asio::socket_base::shutdown_both, ignored);
    impl_->socket.close(ignored);
}

void Stream::Reset() {
    error_code ignored;
    impl_->socket.set_option(asio::socket_base::linger(true, 0), ignored);
    impl_->socket.close(ignored);
}

void Stream::Stop() { impl_->io.stop(); }

}  // namespace simhost
