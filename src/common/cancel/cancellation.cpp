#include "common/cancel/cancellation.h"

#include <utility>

namespace Zentar {

void Cancellation::Cancel() {
    const std::lock_guard lock(mutex_);
    cancelled_.store(true, std::memory_order_release);
    came_.notify_all();
    for (const std::function<void()>& wake : wakers_) {
        wake();
    }
}

bool Cancellation::Wait(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex_);
    return !came_.wait_for(lock, time, [this] { return IsCancelled(); });
}

Cancellation::Waker::Waker(Cancellation* cancellation, std::function<void()> wake)
    : cancellation_(cancellation) {
    if (cancellation_ != nullptr) {
        const std::lock_guard lock(cancellation_->mutex_);
        place_ = cancellation_->wakers_.insert(cancellation_->wakers_.end(), std::move(wake));
    }
}

Cancellation::Waker::~Waker() {
    if (cancellation_ != nullptr) {
        const std::lock_guard lock(cancellation_->mutex_);
        cancellation_->wakers_.erase(place_);
    }
}

}  // namespace Zentar
