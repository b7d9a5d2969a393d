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

/// Decodes replies of one size.
class FreshDecoder {
public:
    explicit FreshDecoder(std::size_t instances)
        : instances_(instances),
          first_server_(PackagesServer(kFirstInstances)),
          server_(PackagesServer(instances)) {}

    double Seconds() const {
        return InFreshProcess([this] {
            DecodeWork(first_server_.port()).Run(kFirstInstances);
            return DecodeWork(server_.port()).Run(instances_);
        });
    }

private:
    std::size_t instances_;
    ServerProcess first_server_;
    ServerProcess server_;
};

void Decode(benchmark::State& state, std::size_t instances) {
    const FreshDecoder decoder(instances);
    TimeEach(state, [&] { return decoder.Seconds(); });
}

/// A large reply takes turns with as many small ones as make up its size: both then meet the same
/// share of what else the machine does, of which the least of many short times would be free.
void Growth(benchmark::State& state, std::size_t instances) {
    constexpr std::size_t kTimes = 40;
    const FreshDecoder small(instances / kTimes);
    const FreshDecoder large(instances);
    std::vector<double> ratios;
    for ([[maybe_unused]] auto _ : state) {
        double small_seconds = 0;
        for (std::size_t i = 0; i < kTimes; ++i) {
            small_seconds += small.Seconds();
        }
        ratios.push_back(large.Seconds() / (small_seconds / kTimes));
        state.SetIterationTime(small_seconds);
    }
    state.counters["ratio"] = Median(ratios);
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
        {"parse/10000", Parse, 10'000, 7, 12},
        {"decode/10000", Decode, 10'000, 7, 12},
        {"growth/40000", Growth, 40'000, 9, 1},
    };
}

}  // namespace bench
