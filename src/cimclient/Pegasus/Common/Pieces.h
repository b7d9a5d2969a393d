// Memory of values and handles: one by one, or in blocks while a reply is read.
#pragma once

#include <cstddef>
#include <limits>
#include <new>
#include <vector>

#include "Pegasus/Common/Config.h"

PEGASUS_NAMESPACE_BEGIN

namespace detail {

/// Aligned for all but over-aligned types. Throws std::bad_alloc.
void* TakePiece(std::size_t size);
/// On any thread.
void ReturnPiece(void* piece) noexcept;

template <class T>
struct PieceAllocator {
    using value_type = T;

    PieceAllocator() = default;
    template <class U>
    PieceAllocator(const PieceAllocator<U>&) {}

    T* allocate(std::size_t count) {
        static_assert(alignof(T) <= 8);
        if (count > std::numeric_limits<std::size_t>::max() / sizeof(T)) {
            throw std::bad_alloc();
        }
        return static_cast<T*>(TakePiece(count * sizeof(T)));
    }
    void deallocate(T* piece, std::size_t) noexcept { ReturnPiece(piece); }
};

template <class T, class U>
bool operator==(const PieceAllocator<T>&, const PieceAllocator<U>&) {
    return true;
}
template <class T, class U>
bool operator!=(const PieceAllocator<T>&, const PieceAllocator<U>&) {
    return false;
}

template <class T>
using Pieces = std::vector<T, PieceAllocator<T>>;

}  // namespace detail

PEGASUS_NAMESPACE_END
