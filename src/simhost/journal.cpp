#include "simhost/journal.h"

#include <utility>

namespace simhost {

std::size_t Journal::Connected() {
    const std::lock_guard lock(mutex_);
    ++unsettled_;
    return ++counters_.connections;
}

void Journal::Settled() {
    const std::lock_guard lock(mutex_);
    --unsettled_;
    settled_.notify_all();
}

void Journal::Handshaken(bool resumed) {
    const std::lock_guard lock(mutex_);
    ++counters_.tls_handshakes;
    counters_.tls_resumptions += resumed ? 1 : 0;
}

void Journal::Requested(Request request) {
    const std::lock_guard lock(mutex_);
    ++counters_.requests;
    if (keeps_ == Keeps::kRequests) {
        requests_.push_back(std::move(request));
    }
}

void Journal::Challenged() {
    const std::lock_guard lock(mutex_);
    ++counters_.challenges;
}

Counters Journal::counters(std::chrono::milliseconds limit) const {
    std::unique_lock lock(mutex_);
    settled_.wait_for(lock, limit, [&] { return unsettled_ == 0; });
    return counters_;
}

std::vector<Request> Journal::requests() const {
    const std::lock_guard lock(mutex_);
    return requests_;
}

void Journal::ForgetRequests() {
    const std::lock_guard lock(mutex_);
    requests_.clear();
}

}  // namespace simhost
