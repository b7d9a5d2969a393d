// Which hosts of a fleet fail, and how.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "simhost/fault.h"

namespace simhost {

enum class FleetFault {
    kNone,
    kDead,       ///< refuses connections
    kStalling,   ///< takes requests and never answers
    kTrickling,  ///< answers a byte at a time
    kRefusing,   ///< refuses all credentials
    kBroken,     ///< cuts its answers off
};

/// Such as "stalling"; "none".
std::string_view NameOf(FleetFault fault);

/// The same in every run. Whom a percentage makes fail, a larger one makes fail in the same way;
/// the share among consecutive numbers is the percentage to within a few hosts.
FleetFault FleetFaultOf(std::uint32_t number, unsigned percent);

/// What makes a server fail so; nothing for those that need more than an answer that is wrong.
std::optional<Fault> ServerFaultOf(FleetFault fault);

}  // namespace simhost
