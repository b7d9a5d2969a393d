#include "soak/short_waits.h"

#include <Pegasus/Client/CIMClient.h>

#include <algorithm>
#include <thread>

#include "common/platform/sleep.h"

// The linker gives the module the first in place of CIMClient::setTimeout, which is the second.
void ShortenedTimeout(Pegasus::CIMClient* client,
                      Pegasus::Uint32 milliseconds) asm("__wrap_" SOAK_SET_TIMEOUT);
void WholeTimeout(Pegasus::CIMClient* client,
                  Pegasus::Uint32 milliseconds) asm("__real_" SOAK_SET_TIMEOUT);

namespace {

Pegasus::Uint32 longest_exchange = 0;

}  // namespace

void ShortenedTimeout(Pegasus::CIMClient* client, Pegasus::Uint32 milliseconds) {
    WholeTimeout(client, std::min(milliseconds, longest_exchange));
}

namespace soak {

void LimitExchanges(std::chrono::milliseconds longest) {
    longest_exchange = static_cast<Pegasus::Uint32>(longest.count());
}

}  // namespace soak

namespace Zentar {

void Sleep(std::uint32_t) { std::this_thread::sleep_for(std::chrono::milliseconds(1)); }

}  // namespace Zentar
