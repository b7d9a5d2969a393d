#include "object_model/piece_blocks.h"

#include <sanitizer/asan_interface.h>

#include <algorithm>
#include <atomic>
#include <new>

#include "Pegasus/Common/Pieces.h"

namespace Pegasus::kalvex::detail {

namespace {

// Small at first: most replies are.
constexpr std::size_t kFirstBlock = 2048;
constexpr std::size_t kLargestBlock = 32 * 1024;
/// Larger ones have memory of their own, which goes as soon as they do.
constexpr std::size_t kLargestPiece = 1024;
constexpr std::size_t kAlignment = 8;

thread_local PieceBlocks* current = nullptr;

}  // namespace

struct PieceBlocks::Block {
    /// More than a block can have pieces: it stays as long as pieces can still be cut from it.
    static constexpr Uint32 kOpen = 1U << 31;

    std::atomic<Uint32> live{kOpen};

    void Release(Uint32 count) {
        if (live.fetch_sub(count, std::memory_order_acq_rel) == count) {
            ::operator delete(this);  // AddressSanitizer forgets what it was told of it
        }
    }
};

namespace {

/// Stands in front of every piece.
struct alignas(kAlignment) PieceHead {
    PieceBlocks::Block* block;  ///< null for memory of its own
};

void* Headed(void* memory, PieceBlocks::Block* block) {
    return ::new (memory) PieceHead{block} + 1;
}

}  // namespace

PieceBlocks::PieceBlocks() : outer_(current), next_size_(kFirstBlock) { current = this; }

PieceBlocks::~PieceBlocks() {
    current = outer_;
    Close();
}

void PieceBlocks::Open() {
    Close();
    static_assert(sizeof(Block) <= kAlignment);
    auto* const memory = static_cast<unsigned char*>(::operator new(next_size_));
    block_ = ::new (memory) Block;
    free_ = memory + kAlignment;
    end_ = memory + next_size_;
    ASAN_POISON_MEMORY_REGION(free_, static_cast<std::size_t>(end_ - free_));
    next_size_ = std::min(2 * next_size_, kLargestBlock);
}

void PieceBlocks::Close() {
    if (block_ != nullptr) {
        block_->Release(Block::kOpen - pieces_);
        block_ = nullptr;
        pieces_ = 0;
    }
}

void* PieceBlocks::Take(std::size_t size) {
    if (block_ == nullptr || size > static_cast<std::size_t>(end_ - free_)) {
        Open();
    }
    ASAN_UNPOISON_MEMORY_REGION(free_, size);
    void* const piece = Headed(free_, block_);
    free_ += size;
    ++pieces_;
    return piece;
}

void* TakePiece(std::size_t size) {
    const std::size_t needed =
        sizeof(PieceHead) + (size + kAlignment - 1) / kAlignment * kAlignment;
    if (current != nullptr && needed <= kLargestPiece) {
        return current->Take(needed);
    }
    return Headed(::operator new(needed), nullptr);
}

void ReturnPiece(void* piece) noexcept {
    auto* const head = static_cast<PieceHead*>(piece) - 1;
    if (head->block != nullptr) {
        ASAN_POISON_MEMORY_REGION(piece, kAlignment);
        head->block->Release(1);
    } else {
        ::operator delete(head);
    }
}

}  // namespace Pegasus::kalvex::detail
