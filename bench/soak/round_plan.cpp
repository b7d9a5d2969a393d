#include "soak/round_plan.h"

#include <algorithm>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string>

namespace soak {

namespace {

constexpr std::int64_t kMostAtOnce = 3;
constexpr std::int64_t kSoundRoundsInTen = 2;

using Random = std::mt19937_64;

/// A name of simhost::Faults::ByName(), and what may follow it.
struct Way {
    const char* name;
    std::int64_t least = 0, most = 0;  ///< of its number; none when both are 0
    const char* text = "";
    bool is_costly = false;  ///< may take the client its whole time limit
    bool on_connect = false;
};

constexpr Way kWays[] = {
    {"close"},
    {"reset"},
    {"stall", 0, 0, "", true},
    {"raw", 0, 0, "=garbage"},
    {"html-page"},
    {"truncate", 1, 40'000},
    {"truncate-reset", 1, 40'000},
    {"slow-drip", 1, 50, "", true},
    {"close-on-connect", 0, 0, "", false, true},
    {"stall-on-connect", 0, 0, "", true, true},
    {"raw-on-connect", 0, 0, "=220 ready", true, true},
    {"ssh-banner", 0, 0, "", true, true},
    {"wrong-length", 1, 1'000, "", true},
    {"wrong-length", -1'000, -1},
    // Neither says that a namespace is missing (3): that would be an answer, not a failure.
    {"cim-error-element", 4, 17, ",provider died"},
    {"cim-error-trailer", 4, 17, ",provider died"},
    {"http-status", 400, 404},
    {"http-status", 500, 505},
    {"cim-error-header", 400, 400, ",request-not-valid"},
    {"content-type"},
    {"no-operation-header"},
    {"wrong-operation-header"},
    {"wrong-message-id"},
    {"huge-reply", 100'000, 3'000'000, "", true},
    {"close-every", 1, 10},
    {"close-every-silently", 1, 10},
    {"huge-error", 100'000, 3'000'000, "", true},
    {"nested-quotes", 1, 100'000, "", true},
    {"echo-authorization"},
    {"wide-cells", 1, 20'000, "", true},
    {"many-errors"},
    {"status-code"},
    {"cut-before-last-chunk"},
    {"http10-401"},
    {"ticket-flood", 0, 0, "", true},
    {"key-update-flood", 0, 0, "", true},
};

/// Unlike the standard distributions the same with every library.
std::int64_t Between(Random& random, std::int64_t least, std::int64_t most) {
    const auto choices = static_cast<std::uint64_t>(most - least) + 1;
    return least + static_cast<std::int64_t>(random() % choices);
}

std::string NameWithNumber(const Way& way, Random& random) {
    std::string name = way.name;
    if (way.least != 0 || way.most != 0) {
        name += "=" + std::to_string(Between(random, way.least, way.most));
    }
    return name + way.text;
}

/// How many requests, or connections, pass before: in most rounds few, since most operations need
/// one each.
std::size_t PassingBefore(const Way& way, Random& random) {
    const bool is_late = Between(random, 0, 1) == 0;
    const std::int64_t most = way.on_connect ? 2 : is_late ? 60 : 8;
    return static_cast<std::size_t>(Between(random, 0, most));
}

std::size_t Times(const Way& way, Random& random) {
    constexpr std::int64_t kForTheWholeRound = 0;
    return static_cast<std::size_t>(way.is_costly ? Between(random, 1, 2)
                                                  : Between(random, kForTheWholeRound, 8));
}

simhost::Fault Made(const Way& way, Random& random) {
    simhost::Fault made = simhost::Faults::ByName(NameWithNumber(way, random));
    made.after = PassingBefore(way, random);
    made.times = Times(way, random);
    return made;
}

}  // namespace

RoundPlan PlanOf(std::uint64_t seed, std::size_t host, std::uint64_t round) {
    RoundPlan plan;
    std::seed_seq mixed{seed, seed >> 32, std::uint64_t{host}, round, round >> 32};
    Random random(mixed);
    if (round == 0 || Between(random, 1, 10) <= kSoundRoundsInTen) {
        return plan;
    }
    for (std::int64_t left = Between(random, 1, kMostAtOnce); left > 0; --left) {
        const Way& way = kWays[random() % std::size(kWays)];
        plan.faults.push_back(Made(way, random));
        const simhost::Fault::Kind kind = plan.faults.back().kind;
        plan.repeats_records |= kind == simhost::Fault::Kind::kHugeReply;
        plan.changes_texts |= kind == simhost::Fault::Kind::kWideCells;
    }
    return plan;
}

void RequireAllWays() {
    for (const auto& name : simhost::Faults::Names()) {
        if (std::ranges::find(kWays, name.name, &Way::name) == std::end(kWays)) {
            throw std::logic_error("no host ever fails by " + name.name);
        }
    }
}

}  // namespace soak
