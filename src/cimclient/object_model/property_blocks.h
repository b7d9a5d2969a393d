// Memory for the properties of a reply.
#pragma once

#include "Pegasus/Common/CIMProperty.h"

namespace Pegasus::kalvex::detail {

/// Makes properties in blocks of a few, which costs less time and memory than one by one. A block
/// goes when the last of its properties is gone.
class PropertyBlocks {
public:
    PropertyBlocks() = default;
    ~PropertyBlocks();
    PropertyBlocks(const PropertyBlocks&) = delete;
    PropertyBlocks& operator=(const PropertyBlocks&) = delete;

    Shared<PropertyBody> Make();

    struct Block;

private:
    Block* block_ = nullptr;
    Uint16 used_ = 0;
};

}  // namespace Pegasus::kalvex::detail
