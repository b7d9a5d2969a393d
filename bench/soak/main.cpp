// Reads many faulty hosts at once for a long time, and reports whether that leaves a trace.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <thread>

#include "common/log/log_control.h"
#include "soak/footprint.h"
#include "soak/gate.h"
#include "soak/reader.h"
#include "soak/round_plan.h"

namespace soak {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::seconds;

/// How far memory may grow and count as flat. The allocator takes some ten minutes to have its
/// share of free memory between the pieces in use; what is in use is exact without thread caches.
constexpr std::size_t kResidentTolerance = 48UL << 20;
constexpr std::size_t kHeapTolerance = 1UL << 20;

struct Options {
    std::size_t hosts = 50;
    int minutes = 0;
    int seconds = 0;
    int warm_up = 60;
    int limit = 500;
    std::uint64_t seed = 1;
};

/// Hosts that stall cost little, and so do those that cannot be reached.
ZentarConnection::ConnectionOptions Limits(const Options& options) {
    ZentarConnection::ConnectionOptions limits;
    limits.connect_pause = std::chrono::milliseconds(1);
    limits.connect_limit = limits.request_limit = std::chrono::milliseconds(options.limit);
    return limits;
}

/// Reads all hosts from construction to destruction.
class Crew {
public:
    Crew(const Hosts& hosts, const Options& options, Tally& tally) : tally_(tally) {
        for (std::size_t i = 0; i < options.hosts; ++i) {
            threads_.emplace_back([&, i, seed = options.seed] {
                Work(Reader(hosts, i, seed, Limits(options), tally));
            });
        }
    }
    ~Crew() { gate_.End(); }
    Crew(const Crew&) = delete;
    Crew& operator=(const Crew&) = delete;

    Footprint FootprintAtRest() {
        gate_.Close();
        const Footprint footprint = MeasureFootprint();
        gate_.Open();
        return footprint;
    }

private:
    void Work(Reader reader) {
        bool goes_on = true;
        for (std::uint64_t round = 0; goes_on && gate_.Enter(); ++round) {
            goes_on = Does(reader, round);
            gate_.Leave();
        }
    }

    bool Does(Reader& reader, std::uint64_t round) {
        try {
            round == 0 ? reader.Learn() : reader.ReadRound(round);
            return true;
        } catch (const std::exception& e) {
            tally_.CountFault(e.what());
            return false;
        }
    }

    Tally& tally_;
    Gate gate_;
    std::vector<std::jthread> threads_;
};

double Mebi(std::size_t bytes) { return static_cast<double>(bytes) / (1 << 20); }

void PrintHead() {
    std::printf("%7s %11s %12s %12s %12s %12s %11s\n", "seconds", "operations", "RSS working",
                "RSS at rest", "heap in use", "peak RSS", "descriptors");
}

void PrintFootprint(Clock::duration since, std::size_t operations, const Footprint& footprint) {
    std::printf("%7lld %11zu %8.1f MiB %8.1f MiB %8.2f MiB %8.1f MiB %11zu\n",
                static_cast<long long>(std::chrono::duration_cast<seconds>(since).count()),
                operations, Mebi(footprint.resident_before), Mebi(footprint.resident),
                Mebi(footprint.heap_in_use), Mebi(footprint.peak), footprint.descriptors);
    std::fflush(stdout);
}

bool Report(bool holds, const char* what) {
    std::printf("%s: %s\n", what, holds ? "yes" : "NO");
    return holds;
}

bool IsFlat(const Footprint& start, const Footprint& end) {
    const bool resident = Report(end.resident <= start.resident + kResidentTolerance,
                                 "resident memory at rest within 48 MiB of the start");
    const bool heap = Report(end.heap_in_use <= start.heap_in_use + kHeapTolerance,
                             "heap in use within 1 MiB of the start");
    const bool descriptors =
        Report(end.descriptors <= start.descriptors, "no more descriptors than at the start");
    return resident && heap && descriptors;
}

/// Errors are logged as by default, but nobody reads them.
void DropMessages() {
    Zentar::SetLogSink([](const Zentar::LogMessage&) {});
}

/// Whether nothing was left and nothing went wrong.
bool Run(const Options& options) {
    RequireAllWays();
    const Hosts hosts(options.hosts, options.seed);
    DropMessages();
    Tally tally;
    Footprint start;
    Footprint end;
    {
        Crew crew(hosts, options, tally);
        std::this_thread::sleep_for(seconds(options.warm_up));
        start = end = crew.FootprintAtRest();
        PrintHead();
        PrintFootprint({}, tally.operations(), start);
        const auto begin = Clock::now();
        const auto deadline =
            begin + std::chrono::minutes(options.minutes) + seconds(options.seconds);
        while (Clock::now() < deadline) {
            std::this_thread::sleep_until(std::min(deadline, Clock::now() + seconds(60)));
            end = crew.FootprintAtRest();
            PrintFootprint(Clock::now() - begin, tally.operations(), end);
        }
    }
    tally.Print();
    std::printf("\n");
    const bool flat = IsFlat(start, end);
    return Report(tally.faults() == 0, "nothing but what the hosts said") && flat;
}

}  // namespace

}  // namespace soak

int main(int argc, char** argv) {
    try {
        CLI::App program(
            "Reads faulty hosts on many threads; fails when memory or descriptors grow");
        soak::Options options;
        program.add_option("--hosts", options.hosts, "Hosts, each with a thread")
            ->capture_default_str();
        program.add_option("--minutes", options.minutes, "How long");
        program.add_option("--seconds", options.seconds,
                           "The same in seconds, on top of the minutes");
        program.add_option("--warm-up", options.warm_up, "Seconds before the first figures")
            ->capture_default_str();
        program.add_option("--limit", options.limit, "Milliseconds that an exchange may take")
            ->capture_default_str();
        program.add_option("--seed", options.seed, "Repeats the same faults")
            ->capture_default_str();
        CLI11_PARSE(program, argc, argv);
        return soak::Run(options) ? 0 : 1;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "soak: %s\n", e.what());
        return 1;
    }
}
