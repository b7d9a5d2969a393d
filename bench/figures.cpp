#include "figure.h"

namespace bench {

namespace {

using Bound = Figure::Bound;

double Seconds(const Readings& readings, const char* benchmark) {
    return readings.at(benchmark).at("seconds");
}

double DecodeCpu(const Readings& readings) {
    return Seconds(readings, "decode/10000") / Seconds(readings, "parse/10000");
}

double DecodeGrowth(const Readings& readings) {
    return Seconds(readings, "decode/100000") / Seconds(readings, "decode/1000");
}

double DecodeMemory(const Readings& readings) {
    return readings.at("decode_memory/10000").at("to_reply");
}

}  // namespace

const std::vector<Figure>& Figures() {
    static const std::vector<Figure> figures = {
        {"decode_cpu",
         "processor time to pugixml's in-place parse",
         Bound::kAtMost,
         2.0,
         {"decode/10000", "parse/10000"},
         DecodeCpu},
        {"decode_memory",
         "growth of peak memory to the reply's size",
         Bound::kAtMost,
         2.5,
         {"decode_memory/10000"},
         DecodeMemory},
        {"decode_growth",
         "processor time of 100,000 instances to 1,000",
         Bound::kAtMost,
         105,
         {"decode/1000", "decode/100000"},
         DecodeGrowth},
    };
    return figures;
}

}  // namespace bench
