#include "object_model/arena.h"

#include <sanitizer/asan_interface.h>

#include <algorithm>
#include <atomic>
#include <new>

#include "Pegasus/Common/ArenaVector.h"
#include "object_model/memory_budget.h"

namespace Pegasus::kalvex::detail {

namespace {

// Small at first: most replies are.
constexpr std::size_t kFirstBlock = 2048;
constexpr std::size_t kLargestBlock = 32UL * 1024;
/// Larger ones come from the heap, and are freed as soon as they end.
constexpr std::size_t kLargestAllocation = 1024;
constexpr std::size_t kAlignment = 8;

thread_local Arena* current = nullptr;

}  // namespace

struct Arena::Block {
    /// More than a block can have allocations: it stays while more can be made in it.
    static constexpr Uint32 kOpen = 1U << 31;

    explicit Block(std::size_t bytes) : size(static_cast<Uint32>(bytes)) {}

    std::atomic<Uint32> live{kOpen};
    Uint32 size;

    void Release(Uint32 count) {
        if (live.fetch_sub(count, std::memory_order_acq_rel) == count) {
            MemoryBudget::Give(size);
            ::operator delete(this);  // AddressSanitizer forgets what it was told of it
        }
    }
};

namespace {

/// Stands in front of every allocation.
struct alignas(kAlignment) Header {
    Arena::Block* block;  ///< null for memory from the heap
};

void* AfterHeader(void* memory, Arena::Block* block) { return ::new (memory) Header{block} + 1; }

/// Stands before the header of memory from the heap.
struct alignas(kAlignment) HeapPiece {
    std::size_t size;
};

/// What a piece of the heap takes at most: with its own header, and up to the end of a page when it
/// is mapped for itself.
std::size_t HeapCost(std::size_t size) {
    constexpr std::size_t kHeader = 16;
    constexpr std::size_t kMapped = 128UL * 1024;
    constexpr std::size_t kPage = 4096;
    return size + kHeader + (size >= kMapped ? kPage : 0);
}

void* HeapAllocate(std::size_t size) {
    const std::size_t needed = sizeof(HeapPiece) + size;
    MemoryBudget::Take(HeapCost(needed));
    return AfterHeader(::new (::operator new(needed)) HeapPiece{needed} + 1, nullptr);
}

void HeapFree(Header* header) noexcept {
    auto* const piece = reinterpret_cast<HeapPiece*>(header) - 1;
    MemoryBudget::Give(HeapCost(piece->size));
    ::operator delete(piece);
}

}  // namespace

Arena::Arena() : outer_(current), next_size_(kFirstBlock) { current = this; }

Arena::~Arena() {
    current = outer_;
    CloseBlock();
}

void Arena::OpenBlock() {
    CloseBlock();
    static_assert(sizeof(Block) <= kAlignment);
    MemoryBudget::Take(next_size_);
    auto* const memory = static_cast<unsigned char*>(::operator new(next_size_));
    block_ = ::new (memory) Block(next_size_);
    free_ = memory + kAlignment;
    end_ = memory + next_size_;
    ASAN_POISON_MEMORY_REGION(free_, static_cast<std::size_t>(end_ - free_));
    next_size_ = std::min(2 * next_size_, kLargestBlock);
}

void Arena::CloseBlock() {
    if (block_ != nullptr) {
        block_->Release(Block::kOpen - allocations_);
        block_ = nullptr;
        allocations_ = 0;
    }
}

void* Arena::Allocate(std::size_t size) {
    if (block_ == nullptr || size > static_cast<std::size_t>(end_ - free_)) {
        OpenBlock();
    }
    ASAN_UNPOISON_MEMORY_REGION(free_, size);
    void* const memory = AfterHeader(free_, block_);
    free_ += size;
    ++allocations_;
    return memory;
}

void* ArenaAllocate(std::size_t size) {
    const std::size_t needed = sizeof(Header) + (size + kAlignment - 1) / kAlignment * kAlignment;
    if (current != nullptr && needed <= kLargestAllocation) {
        return current->Allocate(needed);
    }
    return HeapAllocate(needed);
}

void ArenaFree(void* memory) noexcept {
    auto* const header = static_cast<Header*>(memory) - 1;
    if (header->block != nullptr) {
        ASAN_POISON_MEMORY_REGION(memory, kAlignment);
        header->block->Release(1);
    } else {
        HeapFree(header);
    }
}

}  // namespace Pegasus::kalvex::detail
