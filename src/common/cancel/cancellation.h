// One wish to end, and those who wait for it.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <list>
#include <mutex>

namespace Zentar {

/// May be used from any thread, but not from a signal handler.
class Cancellation {
public:
    Cancellation() = default;
    Cancellation(const Cancellation&) = delete;
    Cancellation& operator=(const Cancellation&) = delete;

    /// For good. Wakes all who wait.
    void Cancel();
    bool IsCancelled() const noexcept { return cancelled_.load(std::memory_order_acquire); }

    /// Blocks for the given time. False when it was cancelled before or meanwhile.
    bool Wait(std::chrono::milliseconds time);

    /// While it lives, `wake` is called when the cancellation comes: on the thread that cancels,
    /// under a lock, so it must be short and must not use the cancellation. One that came earlier
    /// is not reported: look at IsCancelled after the construction. Without a cancellation it does
    /// nothing.
    class Waker {
    public:
        Waker(Cancellation* cancellation, std::function<void()> wake);
        ~Waker();
        Waker(const Waker&) = delete;
        Waker& operator=(const Waker&) = delete;

    private:
        Cancellation* const cancellation_;
        std::list<std::function<void()>>::iterator place_;
    };

private:
    std::atomic<bool> cancelled_{false};
    std::mutex mutex_;
    std::condition_variable came_;
    std::list<std::function<void()>> wakers_;
};

}  // namespace Zentar
