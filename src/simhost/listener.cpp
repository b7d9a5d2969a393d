#include "simhost/listener.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace simhost {

namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;

class Listener::Impl {
public:
    Impl(const ServerOptions& options, std::function<void(NativeSocket)> accepted)
        : no_delay_(options.no_delay), accepted_(std::move(accepted)), acceptor_(io_) {
        Listen(options);
        AwaitConnections();
        thread_ = std::thread([this] { io_.run(); });
    }

    ~Impl() {
        io_.stop();
        thread_.join();
    }

    std::uint16_t port() const { return acceptor_.local_endpoint().port(); }

    void AcceptPending() {
        const std::lock_guard lock(mutex_);
        error_code error;
        tcp::socket socket = acceptor_.accept(error);
        while (!error) {
            const bool ip_v6 = acceptor_.local_endpoint().address().is_v6();
            error_code gone;
            socket.set_option(tcp::no_delay(no_delay_), gone);
            TakeUp({socket.release(), ip_v6});
            socket = acceptor_.accept(error);
        }
    }

private:
    /// The next connections may be luckier.
    void TakeUp(NativeSocket accepted) {
        try {
            accepted_(accepted);
        } catch (const std::exception&) {
            // No thread, descriptor or memory is left for it.
        }
    }

    void Listen(const ServerOptions& options) {
        const auto require = [&](const error_code& error) {
            if (error) {
                throw std::system_error(error.value(), std::system_category(),
                                        "cannot listen on " + options.address + " port " +
                                            std::to_string(options.port));
            }
        };
        error_code error;
        const tcp::endpoint endpoint(asio::ip::make_address(options.address, error), options.port);
        require(error);
        acceptor_.open(endpoint.protocol(), error);
        require(error);
        acceptor_.set_option(asio::socket_base::reuse_address(true));
        acceptor_.bind(endpoint, error);
        require(error);
        acceptor_.listen(asio::socket_base::max_listen_connections, error);
        require(error);
        acceptor_.non_blocking(true);
    }

    void AwaitConnections() {
        const std::lock_guard lock(mutex_);
        acceptor_.async_wait(tcp::acceptor::wait_read, [this](const error_code& error) {
            if (!error) {
                AcceptPending();
                AwaitConnections();
            }
        });
    }

    const bool no_delay_;
    const std::function<void(NativeSocket)> accepted_;
    asio::io_context io_{1};
    std::mutex mutex_;
    tcp::acceptor acceptor_;
    std::thread thread_;
};

Listener::Listener(const ServerOptions& options, std::function<void(NativeSocket)> accepted)
    : impl_(std::make_unique<Impl>(options, std::move(accepted))) {}

Listener::~Listener() = default;

std::uint16_t Listener::port() const { return impl_->port(); }

void Listener::AcceptPending() { impl_->AcceptPending(); }

}  // namespace simhost
