// One host as its connections see it.
#pragma once

#include <cstdint>
#include <utility>

#include "simhost/fault_schedule.h"
#include "simhost/host_description.h"
#include "simhost/host_variant.h"

namespace simhost {

/// Outlives its connections, whose threads share it.
struct ServedHost {
    /// `number` is that in a fleet, from 1; 0: the host is just as it is described.
    explicit ServedHost(HostDescription its_description, std::uint32_t its_number = 0)
        : description(std::move(its_description)), number(its_number) {}

    const HostDescription description;
    const std::uint32_t number;
    bool refuses_everyone = false;  ///< no credentials let in; set before the first connection
    FaultSchedule faults;

    /// Made anew by each call, in well under a millisecond.
    HostVariant Variant() const;
};

}  // namespace simhost
