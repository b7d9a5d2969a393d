// A TCP socket as this client uses it, below TLS or bare.
#pragma once

#include <boost/asio/ip/tcp.hpp>
#include <cerrno>
#include <utility>

#include "common/platform/socket_habits.h"

namespace cimclient {

/// Asks for acknowledgements at once whenever a read is started. Models Asio's asynchronous
/// streams, so that a TLS stream can stand on it.
class Socket {
public:
    using Tcp = boost::asio::ip::tcp;
    using executor_type = Tcp::socket::executor_type;
    using lowest_layer_type = Tcp::socket::lowest_layer_type;

    explicit Socket(boost::asio::io_context& io) : socket_(io) {}

    /// Programs that the application starts do not inherit it.
    void Open(const Tcp& protocol, boost::system::error_code& error) {
        const int made = Zentar::OpenTcpSocket(protocol.family());
        if (made < 0) {
            error.assign(errno, boost::system::system_category());
        } else {
            socket_.assign(protocol, made, error);
        }
    }

    Tcp::socket& tcp() { return socket_; }
    executor_type get_executor() { return socket_.get_executor(); }
    lowest_layer_type& lowest_layer() { return socket_.lowest_layer(); }

    template <class Buffers, class Handler>
    void async_read_some(const Buffers& buffers, Handler&& handler) {
        Zentar::AcknowledgeAtOnce(socket_.native_handle());
        socket_.async_read_some(buffers, std::forward<Handler>(handler));
    }
    template <class Buffers, class Handler>
    void async_write_some(const Buffers& buffers, Handler&& handler) {
        socket_.async_write_some(buffers, std::forward<Handler>(handler));
    }

private:
    Tcp::socket socket_;
};

}  // namespace cimclient
