#include "support/recorded_sleep.h"

#include <utility>

#include "common/platform/sleep.h"

namespace support {

namespace {

thread_local std::vector<std::uint32_t> pauses;
thread_local std::function<void()> during_pause;

}  // namespace

std::vector<std::uint32_t> TakePauses() { return std::exchange(pauses, {}); }

void DuringPauses(std::function<void()> action) { during_pause = std::move(action); }

}  // namespace support

namespace Zentar {

void Sleep(std::uint32_t milliseconds) {
    support::pauses.push_back(milliseconds);
    if (support::during_pause) {
        support::during_pause();
    }
}

}  // namespace Zentar
