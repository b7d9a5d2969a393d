// The simulated hosts, all in one other process.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <vector>

#include "common/records/connection_info.h"

namespace soak {

/// Each host says texts of its own, by HTTP or HTTPS, with a TLS version, a key, a certificate and
/// chunks of its own.
class Hosts {
public:
    /// They serve when the constructor returns; they end with this object or this process. To be
    /// made before any thread is. Throws std::runtime_error when there is no such process.
    Hosts(std::size_t count, std::uint64_t seed);
    ~Hosts();
    Hosts(const Hosts&) = delete;
    Hosts& operator=(const Hosts&) = delete;

    /// Makes a host behave as planned for the round. Each host may be told by one thread at a time.
    void Begin(std::size_t host, std::uint64_t round) const;
    ZentarConnection::ConnectionInfo ConnectionTo(std::size_t host) const;

private:
    struct Link {
        int channel = -1;
        std::uint16_t port = 0;
    };
    std::vector<Link> links_;
    pid_t child_ = -1;
};

}  // namespace soak
