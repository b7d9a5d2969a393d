// A proxy that cuts the connections which it carries.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <thread>

namespace support {

/// Carries one connection at a time to a port of 127.0.0.1, from construction to destruction.
class CuttingProxy {
public:
    enum How { kClose, kReset };

    explicit CuttingProxy(std::uint16_t to);
    ~CuttingProxy();
    CuttingProxy(const CuttingProxy&) = delete;
    CuttingProxy& operator=(const CuttingProxy&) = delete;

    std::uint16_t port() const { return port_; }

    /// Lets so many further bytes through to the client, then cuts its connection, once.
    void CutAfter(std::size_t bytes, How how);
    /// Takes that back.
    void CutNothing();
    /// What has gone to the client so far.
    std::size_t bytes() const { return bytes_; }

private:
    void Serve();
    void Carry(int client, int host);
    bool PassToClient(int client, int host);

    std::uint16_t to_;
    std::uint16_t port_ = 0;
    int listener_ = -1;
    int stop_ = -1;
    std::atomic<std::size_t> bytes_{0};
    std::atomic<long> left_{-1};  ///< bytes up to the cut; negative: none
    std::atomic<How> how_{kClose};
    std::thread serving_;
};

}  // namespace support
