#include "benchmarks.h"
#include "fresh_process.h"
#include "process_use.h"
#include "replay_server.h"
#include "works.h"

namespace bench {

namespace {

/// The first replies that a process reads are small: what it does once only, such as binding
/// symbols, is not measured.
constexpr std::size_t kFirstInstances = 10;

void Decode(benchmark::State& state, std::size_t instances) {
    const ServerProcess first_server = PackagesServer(kFirstInstances);
    const ServerProcess server = PackagesServer(instances);
    TimeEach(state, [&] {
        return InFreshProcess([&] {
            DecodeWork(first_server.port()).Run(kFirstInstances);
            return DecodeWork(server.port()).Run(instances);
        });
    });
}

void Parse(benchmark::State& state, std::size_t instances) {
    const std::string first_body = PackagesReply(kFirstInstances).WithId("1001");
    const std::string body = PackagesReply(instances).WithId("1001");
    TimeEach(state, [&] {
        return InFreshProcess([&] {
            RunParse(first_body);
            return RunParse(body);
        });
    });
}

void DecodeMemory(benchmark::State& state, std::size_t instances) {
    const ServerProcess server = PackagesServer(instances);
    const auto reply_bytes = static_cast<double>(PackagesReply(instances).WithId("1001").size());
    double growth = 0;
    for ([[maybe_unused]] auto _ : state) {
        growth = InFreshProcess([&] {
            DecodeWork work(server.port());
            const PeakMemory peak;
            work.Run(instances);
            return static_cast<double>(peak.Growth());
        });
        state.SetIterationTime(1);
    }
    state.counters["reply_bytes"] = reply_bytes;
    state.counters["to_reply"] = growth / reply_bytes;
}

}  // namespace

std::vector<Measurement> DecodeMeasurements() {
    return {
        {"decode_memory/10000", DecodeMemory, 10'000, 1, 3},
        {"parse/10000", Parse, 10'000, 7, 5},
        {"decode/1000", Decode, 1'000, 50, 5},
        {"decode/10000", Decode, 10'000, 7, 5},
        {"decode/100000", Decode, 100'000, 2, 4},
    };
}

}  // namespace bench
