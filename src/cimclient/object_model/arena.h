// Memory for the many small allocations of a reply's objects, most of which end together.
#pragma once

#include <cstddef>

#include "Pegasus/Common/Config.h"

namespace Pegasus::kalvex::detail {

/// While it lives, ArenaAllocate on this thread takes memory from its blocks, one allocation after
/// the other: that takes less time and memory than the heap. A block is freed with the last of its
/// allocations, on whatever thread, and may outlive the arena. Its blocks, and what is too large
/// for them, count in the thread's MemoryBudget.
class Arena {
public:
    Arena();
    ~Arena();
    Arena(const Arena&) = delete;
    Arena& operator=(const Arena&) = delete;

    void* Allocate(std::size_t size);

    struct Block;

private:
    void OpenBlock();
    void CloseBlock();

    Arena* const outer_;
    Block* block_ = nullptr;
    std::size_t next_size_;
    unsigned char* free_ = nullptr;
    unsigned char* end_ = nullptr;
    Uint32 allocations_ = 0;  ///< in the block
};

}  // namespace Pegasus::kalvex::detail
