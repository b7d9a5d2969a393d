// One thread's work: reading one host, round after round.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "soak/hosts.h"
#include "soak/operations.h"
#include "soak/tally.h"

namespace soak {

class Reader {
public:
    Reader(const Hosts& hosts, std::size_t host, std::uint64_t seed, Tally& tally);

    /// Finds out what the host says while it is sound. Throws std::runtime_error when it cannot.
    void Learn();
    /// Reads all of the host once, through an object made for that, while it behaves as planned.
    void ReadRound(std::uint64_t round);

private:
    /// Everything that the host says to one operation.
    struct Truth {
        std::vector<std::string> in_order;
        std::vector<std::string> sorted;
    };

    void Judge(std::size_t operation, const Reading& reading, bool repeats, std::uint64_t round);
    std::string FaultIn(const Truth& truth, const Reading& reading, bool failed,
                        bool repeats) const;

    const Hosts& hosts_;
    const std::size_t host_;
    const std::uint64_t seed_;
    Tally& tally_;
    std::vector<Truth> truths_;
};

}  // namespace soak
