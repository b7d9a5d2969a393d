#include "soak/footprint.h"

#include <malloc.h>

#include <filesystem>
#include <iterator>

#include "process_use.h"

namespace soak {

namespace {

std::size_t OpenDescriptors() {
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

}  // namespace

Footprint MeasureFootprint() {
    Footprint footprint;
    footprint.resident_before = bench::ResidentBytes();
    malloc_trim(0);
    footprint.resident = bench::ResidentBytes();
    footprint.peak = bench::PeakResidentBytes();
    const struct mallinfo2 heap = mallinfo2();
    footprint.heap_in_use = heap.uordblks + heap.hblkhd;
    footprint.descriptors = OpenDescriptors();
    return footprint;
}

}  // namespace soak
