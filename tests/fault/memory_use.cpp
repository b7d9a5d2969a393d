#include "fault/memory_use.h"

#include <malloc.h>

#include <fstream>
#include <string>

namespace fault {

namespace {

std::size_t StatusBytes(const std::string& field) {
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word) {
        if (word == field) {
            std::size_t kilobytes = 0;
            status >> kilobytes;
            return kilobytes * 1024;
        }
    }
    return 0;
}

}  // namespace

PeakMemory::PeakMemory() {
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << "5";  // sets the peak back to what is resident
    before_ = StatusBytes("VmRSS:");
}

std::size_t PeakMemory::Growth() const {
    const std::size_t peak = StatusBytes("VmHWM:");
    return peak > before_ ? peak - before_ : 0;
}

}  // namespace fault
