#include <dlfcn.h>

#include <algorithm>
#include <stdexcept>

#include "benchmarks.h"
#include "common/log/log_control.h"
#include "fresh_process.h"
#include "module_work.h"
#include "process_use.h"
#include "replay_server.h"

namespace bench {

namespace {

using Zentar::Agentless::Kalvex;

constexpr std::size_t kFirstPackages = 10;

double SecondsOfPackages(std::uint16_t port, std::size_t packages) {
    Kalvex host(HostAt(port, Link::kHttp));
    const double started = ProcessorSeconds();
    ReadPackages(host, packages);
    return ProcessorSeconds() - started;
}

void ReadThroughModule(benchmark::State& state, std::size_t packages) {
    const ServerProcess first_server = PackagesServer(kFirstPackages);
    const ServerProcess server = PackagesServer(packages);
    TimeEach(state, [&] {
        return InFreshProcess([&] {
            Zentar::SetMinLogLevel(1);
            SecondsOfPackages(first_server.port(), kFirstPackages);
            return SecondsOfPackages(server.port(), packages);
        });
    });
}

using SecondsOfRequest = double(std::uint16_t, std::size_t);

SecondsOfRequest* LoadRequest(const char* library) {
    void* const handle = dlopen(library, RTLD_NOW | RTLD_LOCAL);
    void* const function = handle == nullptr ? nullptr : dlsym(handle, "SecondsOfRequest");
    if (function == nullptr) {
        throw std::runtime_error(dlerror());
    }
    return reinterpret_cast<SecondsOfRequest*>(function);
}

/// Takes turns request by request: the difference is smaller than what other work on the machine
/// does to either.
double CostOfLogOff(std::uint16_t port, std::size_t packages) {
    constexpr int kPairs = 80;
    Zentar::SetMinLogLevel(0);
    SecondsOfRequest* const with_log = LoadRequest(BENCH_LOG_OFF_LIBRARY);
    SecondsOfRequest* const without_log = LoadRequest(BENCH_WITHOUT_LOG_LIBRARY);
    double least_with = 1e9;
    double least_without = 1e9;
    for (int i = 0; i < kPairs; ++i) {
        least_with = std::min(least_with, with_log(port, packages));
        least_without = std::min(least_without, without_log(port, packages));
    }
    return least_with / least_without;
}

void LogOff(benchmark::State& state, std::size_t packages) {
    const ServerProcess server = PackagesServer(packages);
    std::vector<double> ratios;
    for ([[maybe_unused]] auto _ : state) {
        ratios.push_back(InFreshProcess([&] { return CostOfLogOff(server.port(), packages); }));
        state.SetIterationTime(1);
    }
    state.counters["ratio"] = Median(ratios);
}

}  // namespace

std::vector<Measurement> ModuleMeasurements() {
    return {
        {"module/10000", ReadThroughModule, 10'000, 7, 5},
        {"log_off/100", LogOff, 100, 51, 1},
    };
}

}  // namespace bench
