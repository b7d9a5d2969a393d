// One thread's work: reading one host, round after round.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "soak/hosts.h"
#include "soak/operations.h"
#include "soak/round_plan.h"
#include "soak/tally.h"

namespace soak {

/// Everything that a host says to one operation.
struct Truth {
    std::vector<std::string> in_order;
    std::vector<std::string> sorted;
};

class Reader {
public:
    /// Each object that reads the host gets the options.
    Reader(const Hosts& hosts, std::size_t host, std::uint64_t seed,
           const ZentarConnection::ConnectionOptions& options, Tally& tally);

    /// Finds out what the host says while it is sound. Throws std::runtime_error when it cannot.
    void Learn();
    /// Reads all of the host once, through an object made for that, while it behaves as planned.
    void ReadRound(std::uint64_t round);

private:
    void Judge(std::size_t operation, const Reading& reading,
               const std::vector<Zentar::Failure>& failures, const RoundPlan& plan,
               std::uint64_t round);

    const Hosts& hosts_;
    const std::size_t host_;
    const std::uint64_t seed_;
    const ZentarConnection::ConnectionOptions options_;
    Tally& tally_;
    std::vector<Truth> truths_;
};

}  // namespace soak
