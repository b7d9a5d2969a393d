// The caller's end of a cancellation.
#pragma once

#include <memory>

#include "common/kalvex_export.h"

namespace Zentar {

class Cancellation;

/// Ends the work of all objects that were given it, from any thread, also while their constructors
/// still connect. Copies are one handle. What is under way ends within 100 ms, everything later
/// fails at once; nothing brings a cancelled handle back. Not for signal handlers: a handler wakes
/// a thread, which cancels.
class KALVEX_EXPORT CancelHandle {
public:
    /// An empty handle, which ends nothing.
    CancelHandle() = default;
    /// A handle that can be cancelled. Throws std::bad_alloc.
    static CancelHandle Make();

    /// An empty handle ignores it.
    void Cancel() const;
    bool IsCancelled() const;
    explicit operator bool() const { return state_ != nullptr; }

    /// For the module itself: what the handle stands for; null for an empty one.
    const std::shared_ptr<Cancellation>& state() const { return state_; }

private:
    std::shared_ptr<Cancellation> state_;
};

}  // namespace Zentar
