#include <dlfcn.h>
#include <sys/mman.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>

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

/// A file keeps its memory from run to run, a copy of it has memory of its own.
std::string CopyInMemory(const char* library) {
    const int copy = memfd_create("request", MFD_CLOEXEC);
    std::string name = "/proc/self/fd/" + std::to_string(copy);
    std::ofstream(name, std::ios::binary) << std::ifstream(library, std::ios::binary).rdbuf();
    return name;
}

SecondsOfRequest* LoadRequest(const char* library) {
    void* const handle = dlopen(CopyInMemory(library).c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const function = handle == nullptr ? nullptr : dlsym(handle, "SecondsOfRequest");
    if (function == nullptr) {
        throw std::runtime_error(dlerror());
    }
    return reinterpret_cast<SecondsOfRequest*>(function);
}

/// Forked processes are laid out alike. Where code and data lie can cost a request a percent or
/// two, which is to be chance in each process and not the same in all of a run.
void LayOutDifferently(unsigned number) {
    constexpr std::size_t kPage = 4096;
    static volatile void* mapped = mmap(nullptr, (1 + number * 37 % 509) * kPage, PROT_NONE,
                                        MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    static_cast<void>(mapped);
    static volatile void* kept = std::malloc(64 + 48 * (number % 61));
    static_cast<void>(kept);
}

/// Takes turns request by request: the difference is smaller than what other work on the machine
/// does to either.
double CostOfLogOff(std::uint16_t port, std::size_t packages, unsigned number) {
    constexpr int kPairs = 40;
    Zentar::SetMinLogLevel(0);
    LayOutDifferently(number);
    struct Side {
        const char* library;
        SecondsOfRequest* seconds = nullptr;
        double least = 1e9;
    };
    std::array<Side, 2> sides{{{BENCH_LOG_OFF_LIBRARY}, {BENCH_WITHOUT_LOG_LIBRARY}}};
    const std::size_t first = number % 2;
    for (const std::size_t side : {first, 1 - first}) {
        sides[side].seconds = LoadRequest(sides[side].library);
    }
    for (int i = 0; i < kPairs; ++i) {
        for (const std::size_t side : {first, 1 - first}) {
            sides[side].least = std::min(sides[side].least, sides[side].seconds(port, packages));
        }
    }
    return sides[0].least / sides[1].least;
}

void LogOff(benchmark::State& state, std::size_t packages) {
    const ServerProcess server = PackagesServer(packages);
    std::vector<double> ratios;
    for ([[maybe_unused]] auto _ : state) {
        const auto number = static_cast<unsigned>(ratios.size());
        ratios.push_back(
            InFreshProcess([&] { return CostOfLogOff(server.port(), packages, number); }));
        state.SetIterationTime(1);
    }
    state.counters["ratio"] = Median(ratios);
}

}  // namespace

std::vector<Measurement> ModuleMeasurements() {
    return {
        {"module/10000", ReadThroughModule, 10'000, 7, 12},
        {"log_off/100", LogOff, 100, 401, 1},
    };
}

}  // namespace bench
