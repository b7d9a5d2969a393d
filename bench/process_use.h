// What this process has used of the machine.
#pragma once

#include <cstddef>

namespace bench {

/// Processor time of this process since it started, of all threads, in seconds.
double ProcessorSeconds();

/// The growth of this process's peak resident memory, in bytes, while the object lives.
class PeakMemory {
public:
    PeakMemory();
    std::size_t Growth() const;

private:
    std::size_t before_;
};

/// Resident memory of this process, in bytes.
std::size_t ResidentBytes();

/// The most that it has been since the process started or a PeakMemory was made, in bytes.
std::size_t PeakResidentBytes();

}  // namespace bench
