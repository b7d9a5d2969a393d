#include "common/platform/sleep.h"

#include <chrono>
#include <thread>

namespace Zentar {

void Sleep(std::uint32_t milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

}  // namespace Zentar
