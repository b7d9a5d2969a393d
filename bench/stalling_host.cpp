#include "stalling_host.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace bench {

namespace {

constexpr const char* kLoopback = "127.0.0.1";

sockaddr_in AddressOf(const char* text, std::uint16_t port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    inet_pton(AF_INET, text, &address.sin_addr);
    address.sin_port = htons(port);
    return address;
}

[[noreturn]] void Fail(const char* call) {
    throw std::system_error(errno, std::generic_category(), call);
}

/// The port that it is bound to.
std::uint16_t Bind(int socket, const char* at) {
    sockaddr_in address = AddressOf(at, 0);
    socklen_t size = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    if (bind(socket, generic, size) != 0 || getsockname(socket, generic, &size) != 0) {
        Fail("bind");
    }
    return ntohs(address.sin_port);
}

/// The port that it listens on.
std::uint16_t Listen(int socket, const char* at, int backlog) {
    const std::uint16_t port = Bind(socket, at);
    if (listen(socket, backlog) != 0) {
        Fail("listen");
    }
    return port;
}

/// A request that is not taken shall not disappear in the kernel.
int SocketOfSmallBuffer() {
    const int made = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int bytes = 4096;
    setsockopt(made, SOL_SOCKET, SO_RCVBUF, &bytes, sizeof bytes);
    return made;
}

}  // namespace

StallingHost::StallingHost(Act act)
    : act_(std::move(act)),
      listener_(SocketOfSmallBuffer()),
      port_(Listen(listener_, kLoopback, SOMAXCONN)),
      accepting_([this] { Accept(); }) {}

StallingHost::~StallingHost() {
    shutdown(listener_, SHUT_RDWR);
    accepting_.join();
    {
        const std::lock_guard lock(mutex_);
        ended_ = true;
        for (const int socket : connections_) {
            shutdown(socket, SHUT_RDWR);
        }
    }
    serving_.clear();
    close(listener_);
}

void StallingHost::Accept() {
    for (int socket = 0; (socket = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC)) >= 0;) {
        serving_.emplace_back([this, socket] { Serve(socket); });
    }
}

void StallingHost::Serve(int socket) {
    {
        const std::lock_guard lock(mutex_);
        connections_.insert(socket);
        if (ended_) {
            shutdown(socket, SHUT_RDWR);
        }
    }
    act_(socket);
    const std::lock_guard lock(mutex_);
    connections_.erase(socket);
    close(socket);
}

FullBacklog::FullBacklog(const char* at)
    : listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    port_ = Listen(listener_, at, 0);
    const sockaddr_in address = AddressOf(at, port_);
    int type = SOCK_STREAM | SOCK_CLOEXEC;
    for (int& filler : fillers_) {
        filler = socket(AF_INET, type, 0);
        // The first one is completed and never taken; the others wait for it.
        if (connect(filler, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 &&
            errno != EINPROGRESS) {
            Fail("connect");
        }
        type |= SOCK_NONBLOCK;
    }
}

FullBacklog::~FullBacklog() {
    for (const int filler : fillers_) {
        close(filler);
    }
    close(listener_);
}

ClosedPort::ClosedPort()
    : socket_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)), port_(Bind(socket_, kLoopback)) {}

ClosedPort::~ClosedPort() { close(socket_); }

}  // namespace bench
