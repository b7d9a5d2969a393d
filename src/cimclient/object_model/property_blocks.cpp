#include "object_model/property_blocks.h"

#include <atomic>
#include <memory>
#include <new>

namespace Pegasus::kalvex::detail {

namespace {

constexpr Uint16 kPerBlock = 16;

}  // namespace

struct PropertyBlocks::Block {
    /// Places that are in use or may still be used.
    std::atomic<Uint32> live{kPerBlock};
    alignas(PropertyBody) unsigned char places[kPerBlock][sizeof(PropertyBody)];

    void Release(Uint32 count) {
        if (live.fetch_sub(count, std::memory_order_acq_rel) == count) {
            delete this;
        }
    }
};

PropertyBlocks::~PropertyBlocks() {
    if (block_ != nullptr && used_ < kPerBlock) {
        block_->Release(kPerBlock - used_);
    }
}

Shared<PropertyBody> PropertyBlocks::Make() {
    if (block_ == nullptr || used_ == kPerBlock) {
        block_ = new Block;
        used_ = 0;
    }
    auto* body = new (block_->places[used_]) PropertyBody;
    body->place = ++used_;
    return Shared<PropertyBody>(body);
}

void Dispose(PropertyBody* body) {
    const Uint16 place = body->place;
    if (place == 0) {
        delete body;
        return;
    }
    auto* first = reinterpret_cast<unsigned char*>(body) - (place - 1) * sizeof(PropertyBody);
    std::destroy_at(body);
    auto* block =
        reinterpret_cast<PropertyBlocks::Block*>(first - offsetof(PropertyBlocks::Block, places));
    block->Release(1);
}

}  // namespace Pegasus::kalvex::detail
