// The figures by which this program's speed is judged, and what they are computed from.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace bench {

/// The least value of each counter over a benchmark's repetitions, by the benchmark's name.
using Readings = std::map<std::string, std::map<std::string, double>>;

struct Figure {
    const char* name;
    const char* meaning;
    double target;  ///< the figure is to be at most this
    std::vector<std::string> benchmarks;
    double (*compute)(const Readings& readings);

    bool IsMetBy(double value) const { return value <= target; }
};

const std::vector<Figure>& Figures();

/// What is worth knowing beside the figures, read off a benchmark's counter.
struct Note {
    const char* meaning;
    const char* benchmark;
    const char* counter;
};

const std::vector<Note>& Notes();

}  // namespace bench
