// How much memory one reply may take: what the arena hands out, and what reading takes beside it.
#pragma once

#include <cstddef>

#include "Pegasus/Common/Config.h"

namespace Pegasus::kalvex::detail {

/// Thrown where a reply would take more than it may. No Exception of the client API: what passes
/// over a bad value must not pass over this.
struct BudgetExceeded {};

/// While it lives, what this thread takes counts. Budgets nest; the innermost counts.
class MemoryBudget {
public:
    explicit MemoryBudget(std::size_t allowed);
    ~MemoryBudget();
    MemoryBudget(const MemoryBudget&) = delete;
    MemoryBudget& operator=(const MemoryBudget&) = delete;

    void Allow(std::size_t more) { allowed_ += more; }

    /// Of this thread's budget; without one they do nothing. Take throws BudgetExceeded.
    static void Take(std::size_t bytes);
    static void Give(std::size_t bytes) noexcept;

private:
    MemoryBudget* const outer_;
    std::size_t allowed_;
    std::size_t taken_ = 0;
};

/// Memory beside the arena, such as a buffer's: taken up to its end. Lives on one thread, and no
/// longer than the budget.
class MemoryCharge {
public:
    MemoryCharge() = default;
    explicit MemoryCharge(std::size_t bytes) { Add(bytes); }
    ~MemoryCharge() { Clear(); }
    MemoryCharge(const MemoryCharge&) = delete;
    MemoryCharge& operator=(const MemoryCharge&) = delete;

    void Add(std::size_t bytes) {
        MemoryBudget::Take(bytes);
        bytes_ += bytes;
    }
    /// For memory that grows and is kept.
    void RaiseTo(std::size_t bytes) {
        if (bytes > bytes_) {
            Add(bytes - bytes_);
        }
    }
    void Clear() noexcept {
        MemoryBudget::Give(bytes_);
        bytes_ = 0;
    }

private:
    std::size_t bytes_ = 0;
};

}  // namespace Pegasus::kalvex::detail
