#include "simhost/listener.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <deque>
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
    explicit Impl(const ServerOptions& options)
        : address_(options.address), no_delay_(options.no_delay) {}

    ~Impl() {
        io_.stop();
        if (thread_.joinable()) {
            thread_.join();
        }
    }

    std::uint16_t Listen(std::uint16_t number, Accepted accepted) {
        Port& port = Bind(number, std::move(accepted));
        error_code error;
        port.acceptor.listen(asio::socket_base::max_listen_connections, error);
        Require(error, number);
        port.acceptor.non_blocking(true);
        return NumberOf(port);
    }

    std::uint16_t Refuse(std::uint16_t number) { return NumberOf(Bind(number, nullptr)); }

    void Start() {
        for (Port& port : ports_) {
            if (port.accepted) {
                AwaitConnections(port);
            }
        }
        thread_ = std::thread([this] { io_.run(); });
    }

    void AcceptPending() {
        for (Port& port : ports_) {
            if (port.accepted) {
                AcceptPending(port);
            }
        }
    }

private:
    struct Port {
        Port(asio::io_context& io, Accepted taker) : accepted(std::move(taker)), acceptor(io) {}

        const Accepted accepted;  ///< none: connections are refused
        tcp::acceptor acceptor;
    };

    static std::uint16_t NumberOf(const Port& port) {
        return port.acceptor.local_endpoint().port();
    }

    void Require(const error_code& error, std::uint16_t port) const {
        if (error) {
            throw std::system_error(
                error.value(), std::system_category(),
                "cannot listen on " + address_ + " port " + std::to_string(port));
        }
    }

    Port& Bind(std::uint16_t number, Accepted accepted) {
        Port& port = ports_.emplace_back(io_, std::move(accepted));
        error_code error;
        const tcp::endpoint endpoint(asio::ip::make_address(address_, error), number);
        Require(error, number);
        port.acceptor.open(endpoint.protocol(), error);
        Require(error, number);
        // Sockets that may reuse an address can be given the same free port while none listens.
        port.acceptor.set_option(asio::socket_base::reuse_address(number != 0));
        port.acceptor.bind(endpoint, error);
        Require(error, number);
        return port;
    }

    void AwaitConnections(Port& port) {
        const std::lock_guard lock(mutex_);
        port.acceptor.async_wait(tcp::acceptor::wait_read, [this, &port](const error_code& error) {
            if (!error) {
                AcceptPending(port);
                AwaitConnections(port);
            }
        });
    }

    void AcceptPending(Port& port) {
        const std::lock_guard lock(mutex_);
        error_code error;
        tcp::socket socket = port.acceptor.accept(error);
        while (!error) {
            const bool ip_v6 = port.acceptor.local_endpoint().address().is_v6();
            error_code gone;
            socket.set_option(tcp::no_delay(no_delay_), gone);
            TakeUp(port, {socket.release(), ip_v6});
            socket = port.acceptor.accept(error);
        }
    }

    /// The next connections may be luckier.
    static void TakeUp(const Port& port, NativeSocket accepted) {
        try {
            port.accepted(accepted);
        } catch (const std::exception&) {
            // No thread, descriptor or memory is left for it.
        }
    }

    const std::string address_;
    const bool no_delay_;
    asio::io_context io_{1};
    std::mutex mutex_;
    std::deque<Port> ports_;
    std::thread thread_;
};

Listener::Listener(const ServerOptions& options) : impl_(std::make_unique<Impl>(options)) {}

Listener::~Listener() = default;

std::uint16_t Listener::Listen(std::uint16_t port, Accepted accepted) {
    return impl_->Listen(port, std::move(accepted));
}

std::uint16_t Listener::Refuse(std::uint16_t port) { return impl_->Refuse(port); }

void Listener::Start() { impl_->Start(); }

void Listener::AcceptPending() { impl_->AcceptPending(); }

}  // namespace simhost
