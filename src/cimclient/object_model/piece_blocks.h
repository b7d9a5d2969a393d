// Memory for the many small pieces of a reply's objects, which mostly go at the same time.
#pragma once

#include <cstddef>

#include "Pegasus/Common/Config.h"

namespace Pegasus::kalvex::detail {

/// While it lives, the pieces that are taken on this thread are cut, one behind the other, from
/// blocks of memory: that takes less time and memory than one allocation for each. A block goes
/// when the last of its pieces has been returned, on whatever thread.
class PieceBlocks {
public:
    PieceBlocks();
    ~PieceBlocks();
    PieceBlocks(const PieceBlocks&) = delete;
    PieceBlocks& operator=(const PieceBlocks&) = delete;

    void* Take(std::size_t size);

    struct Block;

private:
    void Open();
    void Close();

    PieceBlocks* const outer_;
    Block* block_ = nullptr;
    std::size_t next_size_;
    unsigned char* free_ = nullptr;
    unsigned char* end_ = nullptr;
    Uint32 pieces_ = 0;  ///< of the block
};

}  // namespace Pegasus::kalvex::detail
