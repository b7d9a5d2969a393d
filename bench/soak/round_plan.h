// How the hosts fail, by chance that can be repeated.
#pragma once

#include <cstdint>
#include <vector>

#include "simhost/fault.h"

namespace soak {

/// What chance has decided for one host in one round.
struct RoundPlan {
    std::vector<simhost::Fault> faults;  ///< none: a sound round
    bool repeats_records = false;        ///< an answer may say its records repeatedly
    bool changes_texts = false;          ///< an answer may say something else than it should
};

/// The same for the same arguments, in every process. Round 0 is sound.
RoundPlan PlanOf(std::uint64_t seed, std::size_t host, std::uint64_t round);

/// Throws std::logic_error when there is a fault that no plan makes use of.
void RequireAllWays();

}  // namespace soak
