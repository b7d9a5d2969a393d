// A server in a process of its own, so that its work does not count for the one that is measured.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <functional>
#include <memory>

namespace bench {

/// What has arrived at a server. Servers fill in what they see.
struct Counts {
    std::size_t connections = 0;
    std::size_t handshakes = 0;
    std::size_t resumptions = 0;
    std::size_t requests = 0;
    std::size_t challenges = 0;
    std::size_t segments = 0;  ///< TCP segments with data
};

/// Serves from construction to destruction.
class Service {
public:
    virtual ~Service() = default;
    virtual std::uint16_t port() const = 0;
    virtual Counts counts() const = 0;
};

class ServerProcess {
public:
    /// Makes the service in a child process, which ends with this object or this process. Serves
    /// when the constructor returns. Throws std::runtime_error when the service could not be made.
    explicit ServerProcess(const std::function<std::unique_ptr<Service>()>& make);
    ~ServerProcess();
    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;

    std::uint16_t port() const { return port_; }
    Counts counts() const;

    /// Lets it do nothing, its connections open, until it goes on.
    void Stop() const;
    void GoOn() const;

private:
    pid_t child_ = -1;
    int channel_ = -1;
    std::uint16_t port_ = 0;
};

}  // namespace bench
