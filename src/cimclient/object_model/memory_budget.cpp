#include "object_model/memory_budget.h"

#include <algorithm>

namespace Pegasus::kalvex::detail {

namespace {

thread_local MemoryBudget* current = nullptr;

}  // namespace

MemoryBudget::MemoryBudget(std::size_t allowed) : outer_(current), allowed_(allowed) {
    current = this;
}

MemoryBudget::~MemoryBudget() { current = outer_; }

void MemoryBudget::Take(std::size_t bytes) {
    if (current == nullptr) {
        return;
    }
    if (bytes > current->allowed_ - current->taken_) {
        throw BudgetExceeded();
    }
    current->taken_ += bytes;
}

void MemoryBudget::Give(std::size_t bytes) noexcept {
    if (current != nullptr) {
        // What was taken before the budget began may end while it lives.
        current->taken_ -= std::min(bytes, current->taken_);
    }
}

}  // namespace Pegasus::kalvex::detail
