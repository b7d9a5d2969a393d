#include <thread>

#include "benchmarks.h"
#include "fresh_process.h"
#include "module_work.h"
#include "process_use.h"
#include "simulated_host.h"

namespace bench {

namespace {

constexpr std::size_t kManyThreads = 64;
constexpr std::size_t kHosts = 128;

ServerProcess BuiltinHost() {
    return ServerProcess([] { return MakeSimulatedHost(simhost::HostDescription::Builtin(), {}); });
}

/// A host that cannot be read ends the process, and with it the measurement.
void ReadHosts(std::uint16_t port, std::size_t hosts) {
    for (std::size_t i = 0; i < hosts; ++i) {
        ReadInventory(HostAt(port, Link::kHttps));
    }
}

void ReadOnThreads(std::uint16_t port, std::size_t threads, std::size_t hosts) {
    std::vector<std::jthread> readers;
    for (std::size_t i = 0; i < threads; ++i) {
        readers.emplace_back([=] { ReadHosts(port, hosts / threads); });
    }
}

/// Processor time of the reading process alone. What it waits for is the simulated host, whose
/// speed is not to count.
void CostOfHost(benchmark::State& state, std::size_t threads) {
    const ServerProcess server = BuiltinHost();
    TimeEach(state, [&] {
        return InFreshProcess([&] {
            const double started = ProcessorSeconds();
            ReadOnThreads(server.port(), threads, kHosts);
            return (ProcessorSeconds() - started) / kHosts;
        });
    });
}

double PeakOfThreads(std::uint16_t port, std::size_t threads) {
    return InFreshProcess([=] {
        const PeakMemory peak;
        ReadOnThreads(port, threads, 2 * threads);
        return static_cast<double>(peak.Growth());
    });
}

void MemoryPerHost(benchmark::State& state, std::size_t threads) {
    const ServerProcess server = BuiltinHost();
    for ([[maybe_unused]] auto _ : state) {
        const double additional =
            PeakOfThreads(server.port(), threads) - PeakOfThreads(server.port(), 1);
        state.counters["megabytes"] = additional / static_cast<double>(threads - 1) / 1e6;
        state.SetIterationTime(1);
    }
}

}  // namespace

std::vector<Measurement> ThreadMeasurements() {
    return {
        {"threads/1", CostOfHost, 1, 1, 8},
        {"threads/64", CostOfHost, kManyThreads, 1, 8},
        {"thread_memory/64", MemoryPerHost, kManyThreads, 1, 3},
    };
}

}  // namespace bench
