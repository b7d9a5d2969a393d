// Memory of values and handles: from the arena of the reply that is being read, or from the heap.
#pragma once

#include <cstddef>
#include <limits>
#include <new>
#include <vector>

#include "Pegasus/Common/Config.h"

PEGASUS_NAMESPACE_BEGIN

namespace detail {

/// Aligned for all but over-aligned types. Throws std::bad_alloc.
void* ArenaAllocate(std::size_t size);
/// On any thread.
void ArenaFree(void* memory) noexcept;

template <class T>
struct ArenaAllocator {
    using value_type = T;

    ArenaAllocator() = default;
    template <class U>
    ArenaAllocator(const ArenaAllocator<U>&) {}

    T* allocate(std::size_t count) {
        static_assert(alignof(T) <= 8);
        if (count > std::numeric_limits<std::size_t>::max() / sizeof(T)) {
            throw std::bad_alloc();
        }
        return static_cast<T*>(ArenaAllocate(count * sizeof(T)));
    }
    void deallocate(T* memory, std::size_t) noexcept { ArenaFree(memory); }

    friend bool operator==(const ArenaAllocator&, const ArenaAllocator&) { return true; }
};

template <class T>
using ArenaVector = std::vector<T, ArenaAllocator<T>>;

}  // namespace detail

PEGASUS_NAMESPACE_END
