// Lets work pass, and brings it to rest.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>

namespace soak {

class Gate {
public:
    /// Waits while the gate is closed. False when there is to be no more work.
    bool Enter() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return !closed_ || ended_; });
        inside_ += ended_ ? 0 : 1;
        return !ended_;
    }
    void Leave() {
        const std::lock_guard lock(mutex_);
        --inside_;
        changed_.notify_all();
    }

    /// Returns when nobody is inside any more.
    void Close() {
        std::unique_lock lock(mutex_);
        closed_ = true;
        changed_.wait(lock, [this] { return inside_ == 0; });
    }
    void Open() {
        const std::lock_guard lock(mutex_);
        closed_ = false;
        changed_.notify_all();
    }
    void End() {
        const std::lock_guard lock(mutex_);
        ended_ = true;
        changed_.notify_all();
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::size_t inside_ = 0;
    bool closed_ = false;
    bool ended_ = false;
};

}  // namespace soak
