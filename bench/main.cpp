#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>

#include "benchmarks.h"
#include "figure.h"

namespace bench {

namespace {

/// Prints the median of each benchmark, and keeps the least of every counter.
class CollectingReporter : public benchmark::ConsoleReporter {
public:
    CollectingReporter() : ConsoleReporter(OO_None) {}

    void ReportRuns(const std::vector<Run>& runs) override {
        std::vector<Run> medians;
        for (const Run& run : runs) {
            if (run.aggregate_name == "median") {
                medians.push_back(run);
            } else if (run.run_type == Run::RT_Iteration) {
                Keep(run);
            }
        }
        ConsoleReporter::ReportRuns(medians);
    }

    const Readings& readings() const { return readings_; }

private:
    void Keep(const Run& run) {
        auto& counters = readings_[run.run_name.function_name];
        for (const auto& [name, counter] : run.counters) {
            const auto [known, is_new] = counters.emplace(name, counter.value);
            known->second = std::min(known->second, counter.value);
        }
    }

    Readings readings_;
};

void Register(const Measurement& measurement) {
    benchmark::RegisterBenchmark(
        measurement.name.c_str(),
        [=](benchmark::State& state) { measurement.run(state, measurement.size); })
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->Iterations(measurement.iterations)
        ->Repetitions(measurement.repetitions);
}

std::vector<Figure> Wanted(const std::vector<std::string>& names) {
    std::vector<Figure> wanted;
    for (const Figure& figure : Figures()) {
        if (names.empty() || std::find(names.begin(), names.end(), figure.name) != names.end()) {
            wanted.push_back(figure);
        }
    }
    return wanted;
}

Readings Measure(const std::vector<Figure>& figures) {
    std::set<std::string> names;
    for (const Figure& figure : figures) {
        names.insert(figure.benchmarks.begin(), figure.benchmarks.end());
    }
    for (const auto& measurements :
         {DecodeMeasurements(), ModuleMeasurements(), LinkMeasurements(), ThreadMeasurements()}) {
        for (const Measurement& measurement : measurements) {
            if (names.contains(measurement.name)) {
                Register(measurement);
            }
        }
    }
    // What disturbs the machine for a while then falls on a measurement and its yardstick alike.
    char interleave[] = "--benchmark_enable_random_interleaving=true";
    char program[] = "kalvex_bench";
    char* arguments[] = {program, interleave, nullptr};
    int count = 2;
    benchmark::Initialize(&count, arguments);
    CollectingReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return reporter.readings();
}

void Report(const std::vector<Figure>& figures, const Readings& readings,
            const std::string& json_file) {
    nlohmann::ordered_json json;
    std::printf("\n%-20s %9s  %-16s %s\n", "figure", "value", "target", "meaning");
    for (const Figure& figure : figures) {
        const double value = figure.compute(readings);
        std::printf("%-20s %9.3f  at most %-6.5g %s %s\n", figure.name, value, figure.target,
                    figure.IsMetBy(value) ? " " : "!", figure.meaning);
        json[figure.name] = value;
    }
    for (const Note& note : Notes()) {
        if (const auto found = readings.find(note.benchmark); found != readings.end()) {
            std::printf("%-20s %9.3f  %s\n", "", found->second.at(note.counter), note.meaning);
        }
    }
    if (!json_file.empty()) {
        std::ofstream(json_file) << json.dump(2) << '\n';
    }
}

int Main(int argc, char** argv) {
    CLI::App program("Measures how fast the client and the module are");
    std::vector<std::string> known;
    for (const Figure& figure : Figures()) {
        known.push_back(figure.name);
    }
    std::vector<std::string> names;
    std::string json_file;
    program.add_option("--only", names, "Figures to measure [all]")->check(CLI::IsMember(known));
    program.add_option("--json", json_file, "File to write the figures to");
    CLI11_PARSE(program, argc, argv);

    const std::vector<Figure> figures = Wanted(names);
    Report(figures, Measure(figures), json_file);
    return 0;
}

}  // namespace

}  // namespace bench

int main(int argc, char** argv) {
    try {
        return bench::Main(argc, argv);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "kalvex_bench: %s\n", e.what());
        return 1;
    }
}
