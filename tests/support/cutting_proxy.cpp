#include "support/cutting_proxy.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <stdexcept>

namespace support {

namespace {

sockaddr_in Loopback(std::uint16_t port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    return address;
}

void SendAtOnce(int socket) {
    const int on = 1;
    setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

bool SendAll(int socket, const char* bytes, std::size_t count) {
    while (count > 0) {
        const ssize_t sent = send(socket, bytes, count, MSG_NOSIGNAL);
        if (sent <= 0) {
            return false;
        }
        bytes += sent;
        count -= static_cast<std::size_t>(sent);
    }
    return true;
}

void CloseWithReset(int socket) {
    const linger at_once{1, 0};
    setsockopt(socket, SOL_SOCKET, SO_LINGER, &at_once, sizeof at_once);
}

}  // namespace

CuttingProxy::CuttingProxy(std::uint16_t to) : to_(to) {
    listener_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    stop_ = eventfd(0, EFD_CLOEXEC);
    sockaddr_in address = Loopback(0);
    socklen_t size = sizeof address;
    if (bind(listener_, reinterpret_cast<sockaddr*>(&address), size) != 0 ||
        listen(listener_, SOMAXCONN) != 0 ||
        getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
        throw std::runtime_error("the proxy cannot listen");
    }
    port_ = ntohs(address.sin_port);
    serving_ = std::thread([this] { Serve(); });
}

CuttingProxy::~CuttingProxy() {
    eventfd_write(stop_, 1);
    serving_.join();
    close(listener_);
    close(stop_);
}

void CuttingProxy::CutAfter(std::size_t bytes, How how) {
    how_ = how;
    left_ = static_cast<long>(bytes);
}

void CuttingProxy::CutNothing() { left_ = -1; }

void CuttingProxy::Serve() {
    while (true) {
        std::array<pollfd, 2> waiting{{{listener_, POLLIN, 0}, {stop_, POLLIN, 0}}};
        poll(waiting.data(), waiting.size(), -1);
        if (waiting[1].revents != 0) {
            return;
        }
        const int client = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
        const int host = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        const sockaddr_in address = Loopback(to_);
        if (connect(host, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) {
            SendAtOnce(client);
            SendAtOnce(host);
            Carry(client, host);
        }
        close(client);
        close(host);
    }
}

void CuttingProxy::Carry(int client, int host) {
    while (true) {
        std::array<pollfd, 3> waiting{{{client, POLLIN, 0}, {host, POLLIN, 0}, {stop_, POLLIN, 0}}};
        poll(waiting.data(), waiting.size(), -1);
        if (waiting[2].revents != 0) {
            return;
        }
        if (waiting[0].revents != 0) {
            std::array<char, 16384> buffer;
            const ssize_t got = recv(client, buffer.data(), buffer.size(), 0);
            if (got <= 0 || !SendAll(host, buffer.data(), static_cast<std::size_t>(got))) {
                return;
            }
        }
        if (waiting[1].revents != 0 && !PassToClient(client, host)) {
            return;
        }
    }
}

bool CuttingProxy::PassToClient(int client, int host) {
    std::array<char, 16384> buffer;
    const ssize_t got = recv(host, buffer.data(), buffer.size(), 0);
    if (got <= 0) {
        return false;
    }
    auto count = static_cast<std::size_t>(got);
    const long left = left_;
    const bool cuts = left >= 0 && static_cast<std::size_t>(left) <= count;
    if (left >= 0) {
        count = std::min(count, static_cast<std::size_t>(left));
        left_ = cuts ? -1 : left - static_cast<long>(count);
    }
    bytes_ += count;
    if (!SendAll(client, buffer.data(), count)) {
        return false;
    }
    if (cuts && how_ == kReset) {
        CloseWithReset(client);
    }
    return !cuts;
}

}  // namespace support
