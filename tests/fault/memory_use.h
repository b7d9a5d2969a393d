// Resident memory of this process.
#pragma once

#include <cstddef>

namespace fault {

/// From construction on: how far the peak has risen, in bytes.
class PeakMemory {
public:
    PeakMemory();
    std::size_t Growth() const;

private:
    std::size_t before_;
};

}  // namespace fault
