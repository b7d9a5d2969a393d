// What has happened at a server.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <vector>

#include "simhost/server.h"

namespace simhost {

/// Shared by a server's threads.
class Journal {
public:
    /// Requests take memory for as long as they are kept.
    enum class Keeps { kRequests, kCountersOnly };
    explicit Journal(Keeps keeps) : keeps_(keeps) {}

    /// Gives the connection's number. A connection is settled when it has finished, or needs no,
    /// TLS handshake.
    std::size_t Connected();
    void Settled();
    void Handshaken(bool resumed);
    void Requested(Request request);
    void Challenged();

    /// Waits, at most so long, until all connections are settled: a client may have finished its
    /// handshake a moment before the server has.
    Counters counters(std::chrono::milliseconds limit) const;
    std::vector<Request> requests() const;
    void ForgetRequests();

private:
    const Keeps keeps_;
    mutable std::mutex mutex_;
    mutable std::condition_variable settled_;
    std::size_t unsettled_ = 0;
    Counters counters_;
    std::vector<Request> requests_;
};

}  // namespace simhost
