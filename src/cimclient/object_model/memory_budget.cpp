#include "object_model/memory_budget.h"

#include <algorithm>

namespace Pegasus::kalvex::detail {

namespace {

thread_local MemoryBudget* innermost = nullptr;

}  // namespace

MemoryBudget::MemoryBudget(std::size_t allowed) : outer_(innermost), allowed_(allowed) {
    innermost = this;
}

MemoryBudget::~MemoryBudget() { innermost = outer_; }

void MemoryBudget::Take(std::size_t bytes) {
    if (innermost == nullptr) {
        return;
    }
    if (bytes > innermost->allowed_ - innermost->taken_) {
        throw BudgetExceeded();
    }
    innermost->taken_ += bytes;
}

void MemoryBudget::Give(std::size_t bytes) noexcept {
    if (innermost != nullptr) {
        // What was taken before the budget began may end while it lives.
        innermost->taken_ -= std::min(bytes, innermost->taken_);
    }
}

}  // namespace Pegasus::kalvex::detail
