#include "process_use.h"

#include <time.h>

#include <fstream>
#include <stdexcept>
#include <string>

namespace bench {

namespace {

std::size_t StatusBytes(const std::string& field) {
    std::ifstream status("/proc/self/status");
    for (std::string name; status >> name;) {
        if (std::size_t kilobytes = 0; name == field && status >> kilobytes) {
            return kilobytes * 1024;
        }
    }
    throw std::runtime_error("no " + field + " in /proc/self/status");
}

void ForgetPeak() {
    std::ofstream clear_refs("/proc/self/clear_refs");
    if (!(clear_refs << "5" << std::flush)) {
        throw std::runtime_error("cannot reset the peak in /proc/self/clear_refs");
    }
}

}  // namespace

double ProcessorSeconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

PeakMemory::PeakMemory() {
    ForgetPeak();
    before_ = ResidentBytes();
}

std::size_t PeakMemory::Growth() const {
    const std::size_t peak = PeakResidentBytes();
    return peak > before_ ? peak - before_ : 0;
}

std::size_t ResidentBytes() { return StatusBytes("VmRSS:"); }

std::size_t PeakResidentBytes() { return StatusBytes("VmHWM:"); }

}  // namespace bench
