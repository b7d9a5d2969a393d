#include "soak/reader.h"

#include <algorithm>
#include <stdexcept>

namespace soak {

namespace {

using Zentar::Agentless::Kalvex;

constexpr int kAttemptsToLearn = 20;

bool IsSaid(const std::vector<std::string>& sorted_truth, const std::string& statement) {
    return std::ranges::binary_search(sorted_truth, statement);
}

/// Whether nothing of the truth is missing in the statements, which may repeat it.
bool IsWhole(const std::vector<std::string>& sorted_truth, std::vector<std::string> statements) {
    std::ranges::sort(statements);
    return std::ranges::all_of(sorted_truth,
                               [&](const std::string& text) { return IsSaid(statements, text); });
}

/// Empty when the reading is as it may be.
std::string FaultIn(const Truth& truth, const Reading& reading, bool failed,
                    const RoundPlan& plan) {
    for (const std::string& statement : reading.statements) {
        if (!plan.changes_texts && !IsSaid(truth.sorted, statement)) {
            return "nobody said \"" + statement + "\"";
        }
    }
    if (reading.result != 0 && !reading.statements.empty()) {
        return "failed, but gave records";
    }
    if (reading.result != 0 && !failed) {
        return "failed without a reason";
    }
    if (failed || plan.changes_texts) {
        return {};
    }
    if (!IsWhole(truth.sorted, reading.statements)) {
        return "succeeded without all that was said";
    }
    return plan.repeats_records || reading.statements == truth.in_order ? "" : "not as it was said";
}

}  // namespace

Reader::Reader(const Hosts& hosts, std::size_t host, std::uint64_t seed,
               const ZentarConnection::ConnectionOptions& options, Tally& tally)
    : hosts_(hosts), host_(host), seed_(seed), options_(options), tally_(tally) {}

void Reader::Learn() {
    hosts_.Begin(host_, 0);
    for (int attempt = 0; attempt < kAttemptsToLearn; ++attempt) {
        Kalvex host(hosts_.ConnectionTo(host_), options_);
        truths_.clear();
        for (const Operation& operation : Operations()) {
            Truth truth{operation.read(host).statements, {}};
            truth.sorted = truth.in_order;
            std::ranges::sort(truth.sorted);
            truths_.push_back(std::move(truth));
        }
        if (host.TakeFailures().failures.empty()) {
            return;
        }
    }
    throw std::runtime_error("a sound host cannot be read");
}

void Reader::ReadRound(std::uint64_t round) {
    hosts_.Begin(host_, round);
    const RoundPlan plan = PlanOf(seed_, host_, round);
    Kalvex host(hosts_.ConnectionTo(host_), options_);
    for (std::size_t i = 0; i < Operations().size(); ++i) {
        host.TakeFailures();
        try {
            const Reading reading = Operations()[i].read(host);
            Judge(i, reading, host.TakeFailures().failures, plan, round);
        } catch (const std::exception& e) {
            tally_.CountFault(std::string(Operations()[i].name) + " threw " + e.what());
        }
    }
}

void Reader::Judge(std::size_t operation, const Reading& reading,
                   const std::vector<Zentar::Failure>& failures, const RoundPlan& plan,
                   std::uint64_t round) {
    const bool failed = !failures.empty();
    const std::string fault = FaultIn(truths_[operation], reading, failed, plan);
    if (!fault.empty()) {
        tally_.CountFault(std::string(Operations()[operation].name) + " of host " +
                          std::to_string(host_) + " in round " + std::to_string(round) + ": " +
                          fault);
    } else if (failed) {
        tally_.CountFailure(reading.result, failures.front());
    } else {
        tally_.CountRead();
    }
}

}  // namespace soak
