#include "common/cimom/src/host_access.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

#include "common/cancel/cancellation.h"
#include "common/platform/sleep.h"

namespace Zentar {

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = HostAccess::Milliseconds;

constexpr std::size_t kMostFailures = 1000;
constexpr int kTimeoutsUntilGivenUp = 2;
/// Longer times make no difference, and cannot overflow a clock.
constexpr Milliseconds kLongestTime = std::chrono::hours(24 * 365);

/// Rounded up, so that a limit is never shorter than it was asked for.
Milliseconds TimeUntil(Clock::time_point deadline) {
    return std::chrono::ceil<Milliseconds>(deadline - Clock::now());
}

Failure Ended(FailureKind kind, const char* text) {
    Failure failure;
    failure.kind = kind;
    failure.text = text;
    return failure;
}

Failure Cancelled() { return Ended(FailureKind::kCancelled, "The caller cancelled."); }

Failure DeadlinePassed() {
    return Ended(FailureKind::kDeadline, "The time for the whole host is over.");
}

}  // namespace

HostAccess::HostAccess(const ZentarConnection::ConnectionOptions& options)
    : options_(options),
      cancellation_(options.cancel ? options.cancel.state() : std::make_shared<Cancellation>()) {
    if (options.deadline) {
        deadline_ =
            Clock::now() + std::clamp(*options.deadline, Milliseconds::zero(), kLongestTime);
    }
}

void HostAccess::Cancel() {
    if (cancellation_) {
        cancellation_->Cancel();
    } else {
        cancelled_.store(true, std::memory_order_release);
    }
}

bool HostAccess::IsCancelled() const {
    return cancellation_ ? cancellation_->IsCancelled()
                         : cancelled_.load(std::memory_order_acquire);
}

bool HostAccess::IsPastDeadline() const { return deadline_ && Clock::now() >= *deadline_; }

std::optional<Failure> HostAccess::Stop() const {
    if (IsCancelled()) {
        return Cancelled();
    }
    return IsPastDeadline() ? std::optional(DeadlinePassed()) : std::nullopt;
}

std::optional<Failure> HostAccess::Ending() const {
    auto stop = Stop();
    return stop ? stop : given_up_for_;
}

std::uint32_t HostAccess::Clipped(Milliseconds limit) const {
    constexpr auto kMost = Milliseconds(std::numeric_limits<std::uint32_t>::max());
    const Milliseconds left = deadline_ ? std::min(limit, TimeUntil(*deadline_)) : limit;
    return static_cast<std::uint32_t>(std::clamp(left, Milliseconds::zero(), kMost).count());
}

void HostAccess::Pause() const {
    const Milliseconds pause(Clipped(std::min(options_.connect_pause, kLongestTime)));
    if (options_.cancel) {
        cancellation_->Wait(pause);
    } else {
        Sleep(static_cast<std::uint32_t>(pause.count()));
    }
}

/// What a limit or the client's own report of being cancelled stands for.
Failure HostAccess::Explained(Failure failure) const {
    const auto replace = [&failure](const Failure& ending) {
        failure.kind = ending.kind;
        failure.code = 0;
        failure.text = ending.text;
    };
    if (IsCancelled()) {
        replace(Cancelled());
    } else if (failure.kind == FailureKind::kTimedOut && IsPastDeadline()) {
        replace(DeadlinePassed());
    }
    return failure;
}

void HostAccess::Remember(Failure failure) {
    if (failures_.size() == kMostFailures) {
        failures_.pop_front();
        ++dropped_;
    }
    failures_.push_back(std::move(failure));
}

void HostAccess::Note(Failure failure) { Remember(Explained(std::move(failure))); }

void HostAccess::NoteUnreachable(Failure failure) {
    failure = Explained(std::move(failure));
    GiveUp(failure);
    Remember(std::move(failure));
}

void HostAccess::NoteFailedRequest(Failure failure) {
    failure = Explained(std::move(failure));
    timeouts_in_a_row_ = failure.kind == FailureKind::kTimedOut ? timeouts_in_a_row_ + 1 : 0;
    if (timeouts_in_a_row_ >= kTimeoutsUntilGivenUp ||
        failure.kind == FailureKind::kCredentialsRefused) {
        GiveUp(failure);
    }
    Remember(std::move(failure));
}

void HostAccess::GiveUp(const Failure& failure) {
    if (options_.give_up && !given_up_for_) {
        given_up_for_ = failure;
    }
}

FailureList HostAccess::TakeFailures() {
    FailureList list;
    list.failures.assign(std::make_move_iterator(failures_.begin()),
                         std::make_move_iterator(failures_.end()));
    list.dropped = std::exchange(dropped_, 0);
    failures_.clear();
    return list;
}

}  // namespace Zentar
