// Measures how exactly the module's calls end with hosts that stall.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>

#include "common/log/log_control.h"
#include "time_limits/limits.h"

namespace time_limits {

namespace {

constexpr int kAsked[] = {200, 1000};
constexpr int kRepetitions = 2;

double Allowed(int asked) { return 0.02 * asked + 100; }

const char* PhaseOf(const Stall& stall) {
    return stall.phase == Zentar::FailurePhase::kNone ? "-" : WordsOf(stall.phase);
}

/// The one furthest from what was asked, on either side.
double Worst(const Limit& limit, const Stall& stall, int asked) {
    double worst = asked;
    for (int i = 0; i < kRepetitions; ++i) {
        const double taken = limit.measure(stall, milliseconds(asked)).count();
        worst = std::abs(taken - asked) >= std::abs(worst - asked) ? taken : worst;
    }
    return worst;
}

/// Whether it was kept.
bool Report(const Limit& limit, const Stall& stall, int asked) {
    const double measured = Worst(limit, stall, asked);
    const double excess = measured - asked;
    const bool is_kept = std::abs(excess) <= Allowed(asked);
    std::printf("%-15s %-26s %-34s %6d %9.1f %7.1f %8.0f %s\n", limit.name, PhaseOf(stall),
                stall.how, asked, measured, excess, Allowed(asked), is_kept ? "" : "!");
    std::fflush(stdout);
    return is_kept;
}

bool ReportAll() {
    std::printf("%-15s %-26s %-34s %6s %9s %7s %8s   (milliseconds)\n", "limit", "phase", "stall",
                "asked", "measured", "excess", "allowed");
    bool all_kept = true;
    for (const Limit& limit : Limits()) {
        for (const Stall& stall : Stalls()) {
            for (const int asked : kAsked) {
                all_kept &= !limit.applies_to(stall.moment) || Report(limit, stall, asked);
            }
        }
    }
    return all_kept;
}

}  // namespace

}  // namespace time_limits

int main() {
    Zentar::SetLogSink([](const Zentar::LogMessage&) {});
    try {
        return time_limits::ReportAll() ? 0 : 1;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "time_limits: %s\n", e.what());
        return 1;
    }
}
