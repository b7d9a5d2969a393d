#include "simhost/fleet_fault.h"

#include <iterator>

#include "simhost/fleet_identity.h"

namespace simhost {

namespace {

constexpr std::string_view kFleetFaultNames[] = {"none",      "dead",     "stalling",
                                                 "trickling", "refusing", "broken"};

/// So long is the pause after each byte of a trickling host.
constexpr std::chrono::milliseconds kTricklePause{100};

/// So much is sent of an answer that is cut off: its head, and the first elements.
constexpr std::size_t kBrokenAt = 700;

}  // namespace

std::string_view NameOf(FleetFault fault) {
    return kFleetFaultNames[static_cast<std::size_t>(fault)];
}

FleetFault FleetFaultOf(std::uint32_t number, unsigned percent) {
    constexpr std::size_t kFaults = std::size(kFleetFaultNames) - 1;
    // Multiples of the golden section lie evenly between 0 and 1, in any row of them.
    constexpr std::uint32_t kGoldenSection = 0x9E3779B9U;
    constexpr std::uint64_t kHundred = 100;
    const std::uint32_t rank = number * kGoldenSection;
    if ((rank * kHundred >> 32U) >= percent) {
        return FleetFault::kNone;
    }
    return static_cast<FleetFault>(Mixed(number) % kFaults + 1);
}

std::optional<Fault> ServerFaultOf(FleetFault fault) {
    switch (fault) {
        case FleetFault::kStalling:
            return Faults::Stall();
        case FleetFault::kTrickling:
            return Faults::SlowDrip(1, kTricklePause);
        case FleetFault::kBroken:
            return Faults::Truncate(kBrokenAt);
        case FleetFault::kNone:
        case FleetFault::kDead:
        case FleetFault::kRefusing:
            break;
    }
    return std::nullopt;
}

}  // namespace simhost
