// SIGINT and SIGTERM as a wish to stop.
#pragma once

#include <signal.h>

#include <atomic>
#include <functional>
#include <thread>

namespace command {

/// While it lives, the first of the two signals calls `stop`, on a thread of its own, and the next
/// one ends the process at once. Made before other threads are started, which then leave the
/// signals alone, and after questions on the terminal. A signal that the parent process chose to
/// ignore stays ignored.
class Interruption {
public:
    explicit Interruption(std::function<void()> stop);
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    /// The number of the signal that came first; 0 while there is none.
    int signal() const { return signal_; }

    /// The signal's exit status, or `status` while there is none.
    int StatusOr(int status) const;

private:
    void Watch(const std::function<void()>& stop);

    sigset_t watched_{};
    sigset_t mask_before_{};
    std::atomic<int> signal_{0};
    std::atomic<bool> is_over_{false};
    std::thread watching_;
};

}  // namespace command
