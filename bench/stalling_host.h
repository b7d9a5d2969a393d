// Hosts that let their clients wait, made of bare sockets.
#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

namespace bench {

/// Takes connections on a port of 127.0.0.1 from construction to destruction.
class StallingHost {
public:
    /// What is done with a connection, on a thread of its own; the connection is closed afterwards.
    using Act = std::function<void(int socket)>;

    explicit StallingHost(Act act);
    /// Hangs up.
    ~StallingHost();
    StallingHost(const StallingHost&) = delete;
    StallingHost& operator=(const StallingHost&) = delete;

    std::uint16_t port() const { return port_; }

private:
    void Accept();
    void Serve(int socket);

    Act act_;
    int listener_ = -1;
    std::uint16_t port_ = 0;
    std::mutex mutex_;
    std::set<int> connections_;
    bool ended_ = false;
    std::vector<std::jthread> serving_;  ///< of the accepting thread, until it has ended
    std::jthread accepting_;
};

/// A port of this machine whose queue of connections is full: no more are completed, none is
/// refused.
class FullBacklog {
public:
    explicit FullBacklog(const char* address = "127.0.0.1");
    ~FullBacklog();
    FullBacklog(const FullBacklog&) = delete;
    FullBacklog& operator=(const FullBacklog&) = delete;

    std::uint16_t port() const { return port_; }

private:
    int listener_ = -1;
    int fillers_[3] = {-1, -1, -1};
    std::uint16_t port_ = 0;
};

/// A port of 127.0.0.1 that refuses connections.
class ClosedPort {
public:
    ClosedPort();
    ~ClosedPort();
    ClosedPort(const ClosedPort&) = delete;
    ClosedPort& operator=(const ClosedPort&) = delete;

    std::uint16_t port() const { return port_; }

private:
    int socket_ = -1;
    std::uint16_t port_ = 0;
};

}  // namespace bench
