// What all connections to one host share: options, limits, the end, and the failures met.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>

#include "common/records/connection_options.h"
#include "common/records/failure.h"

namespace Zentar {

class Cancellation;

/// Used from one thread at a time, but for Cancel.
class HostAccess {
public:
    using Milliseconds = std::chrono::milliseconds;

    /// As without options: starts no thread and takes no lock, and Cancel takes effect between
    /// requests only.
    HostAccess() = default;
    /// The deadline counts from here.
    explicit HostAccess(const ZentarConnection::ConnectionOptions& options);
    HostAccess(const HostAccess&) = delete;
    HostAccess& operator=(const HostAccess&) = delete;

    const ZentarConnection::ConnectionOptions& options() const { return options_; }
    /// Null without options.
    const std::shared_ptr<Cancellation>& cancellation() const { return cancellation_; }

    /// From any thread.
    void Cancel();

    /// The caller's wish to stop: cancelled, or past the deadline.
    std::optional<Failure> Stop() const;
    /// Why nothing may be asked of the host any more; nothing while it may.
    std::optional<Failure> Ending() const;
    bool HasEnded() const { return Ending().has_value(); }

    /// The limit, or what is left until the deadline; in milliseconds, for CIMClient::setTimeout.
    std::uint32_t Clipped(Milliseconds limit) const;

    /// Pauses between attempts to connect, up to the deadline; less when it is cancelled.
    void Pause() const;

    /// Remembers a failure. One that the deadline or cancelling led to becomes of that kind.
    void Note(Failure failure);
    /// The same for a host that could not be reached in all attempts.
    void NoteUnreachable(Failure failure);
    /// The same for a request that was made.
    void NoteFailedRequest(Failure failure);
    /// A request was answered.
    void NoteAnswer() { timeouts_in_a_row_ = 0; }

    /// The failures since the last call, each once.
    FailureList TakeFailures();

private:
    bool IsCancelled() const;
    bool IsPastDeadline() const;
    void Remember(Failure failure);
    Failure Explained(Failure failure) const;
    void GiveUp(const Failure& failure);

    ZentarConnection::ConnectionOptions options_;
    std::shared_ptr<Cancellation> cancellation_;
    std::atomic<bool> cancelled_{false};  ///< in place of the cancellation, without options
    std::optional<std::chrono::steady_clock::time_point> deadline_;
    std::optional<Failure> given_up_for_;
    int timeouts_in_a_row_ = 0;
    std::deque<Failure> failures_;
    std::uint64_t dropped_ = 0;
};

}  // namespace Zentar
