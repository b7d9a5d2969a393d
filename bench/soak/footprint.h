// What this process holds while it is at rest.
#pragma once

#include <cstddef>

namespace soak {

struct Footprint {
    std::size_t resident_before = 0;  ///< as the work left it
    std::size_t resident = 0;         ///< without the free memory that the allocator kept
    std::size_t peak = 0;             ///< since the process started
    std::size_t heap_in_use = 0;
    std::size_t descriptors = 0;
};

/// Gives free memory back to the system.
Footprint MeasureFootprint();

}  // namespace soak
