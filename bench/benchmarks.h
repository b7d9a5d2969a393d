// The measured programs that give the figures, for Google Benchmark.
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>
#include <vector>

namespace bench {

struct Measurement {
    std::string name;
    void (*run)(benchmark::State& state, std::size_t size);
    std::size_t size;
    int iterations;
    int repetitions;
};

std::vector<Measurement> DecodeMeasurements();
std::vector<Measurement> ModuleMeasurements();
std::vector<Measurement> LinkMeasurements();
std::vector<Measurement> ThreadMeasurements();

inline double Median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Reports `seconds()` as the time of each iteration, and the least as the counter "seconds".
template <class Work>
void TimeEach(benchmark::State& state, Work seconds) {
    double least = 1e9;
    for ([[maybe_unused]] auto _ : state) {
        const double taken = seconds();
        state.SetIterationTime(taken);
        least = std::min(least, taken);
    }
    state.counters["seconds"] = least;
}

}  // namespace bench
