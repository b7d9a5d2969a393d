// Hosts that let their clients wait.
#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <thread>

namespace bench {

/// Takes connections on a port of 127.0.0.1, one at a time, from construction to destruction.
class StallingHost {
public:
    /// What is done with a connection, which is closed afterwards.
    using Act = std::function<void(int socket)>;

    explicit StallingHost(Act act);
    /// Hangs up.
    ~StallingHost();
    StallingHost(const StallingHost&) = delete;
    StallingHost& operator=(const StallingHost&) = delete;

    std::uint16_t port() const { return port_; }

private:
    void Serve();
    void SetConnection(int socket);

    Act act_;
    int listener_ = -1;
    std::uint16_t port_ = 0;
    std::mutex mutex_;
    int connection_ = -1;  ///< the one that is served
    std::thread serving_;
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

}  // namespace bench
