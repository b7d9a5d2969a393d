#include <dlfcn.h>

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

using SecondsOfRequest = double(std::uint16_t, std::size_t, int);

SecondsOfRequest* LoadRequest(const char* library) {
    void* const handle = dlopen(library, RTLD_NOW | RTLD_LOCAL);
    void* const function = handle == nullptr ? nullptr : dlsym(handle, "SecondsOfRequest");
    if (function == nullptr) {
        throw std::runtime_error(dlerror());
    }
    return reinterpret_cast<SecondsOfRequest*>(function);
}

void Request(benchmark::State& state, const char* library, std::size_t packages) {
    constexpr int kRequests = 100;
    const ServerProcess server = PackagesServer(packages);
    TimeEach(state, [&] {
        return InFreshProcess([&] {
            Zentar::SetMinLogLevel(0);
            return LoadRequest(library)(server.port(), packages, kRequests);
        });
    });
}

void RequestWithLogOff(benchmark::State& state, std::size_t packages) {
    Request(state, BENCH_LOG_OFF_LIBRARY, packages);
}

void RequestWithoutLog(benchmark::State& state, std::size_t packages) {
    Request(state, BENCH_WITHOUT_LOG_LIBRARY, packages);
}

}  // namespace

std::vector<Measurement> ModuleMeasurements() {
    return {
        {"module/10000", ReadThroughModule, 10'000, 7, 5},
        {"log_off/100", RequestWithLogOff, 100, 3, 10},
        {"without_log/100", RequestWithoutLog, 100, 3, 10},
    };
}

}  // namespace bench
