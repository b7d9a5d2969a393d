#include "figure.h"

namespace bench {

namespace {

using Bound = Figure::Bound;

double Counter(const Readings& readings, const char* benchmark, const char* counter) {
    return readings.at(benchmark).at(counter);
}

double TimeRatio(const Readings& readings, const char* benchmark, const char* yardstick) {
    return Counter(readings, benchmark, "seconds") / Counter(readings, yardstick, "seconds");
}

double DecodeCpu(const Readings& readings) {
    return TimeRatio(readings, "decode/10000", "parse/10000");
}

double ModuleCpu(const Readings& readings) {
    return TimeRatio(readings, "module/10000", "parse/10000");
}

double DecodeMemory(const Readings& readings) {
    return Counter(readings, "decode_memory/10000", "to_reply");
}

double DecodeGrowth(const Readings& readings) {
    return Counter(readings, "growth/100000", "ratio");
}

double InventoryLatency(const Readings& readings) {
    return Counter(readings, "inventory/10", "to_link");
}

double WritesPerRequest(const Readings& readings) {
    return Counter(readings, "writes/100", "writes");
}

double ExtraHandshakes(const Readings& readings) {
    return Counter(readings, "handshakes/40", "extra_announced") +
           Counter(readings, "handshakes/40", "extra_unannounced");
}

double LogOffCost(const Readings& readings) { return Counter(readings, "log_off/100", "ratio"); }

double ThreadScaling(const Readings& readings) {
    return TimeRatio(readings, "threads/1", "threads/64");
}

}  // namespace

const std::vector<Figure>& Figures() {
    static const std::vector<Figure> figures = {
        {"decode_cpu",
         "processor time of a reply to pugixml's in-place parse",
         Bound::kAtMost,
         2.0,
         {"decode/10000", "parse/10000"},
         DecodeCpu},
        {"module_cpu",
         "the same through the module, records filled",
         Bound::kAtMost,
         2.2,
         {"module/10000", "parse/10000"},
         ModuleCpu},
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
         {"growth/100000"},
         DecodeGrowth},
        {"inventory_latency",
         "inventory to the link's round trips, 10 ms each",
         Bound::kAtMost,
         1.05,
         {"inventory/10"},
         InventoryLatency},
        {"writes_per_request",
         "TCP segments of a request",
         Bound::kAtMost,
         1,
         {"writes/100"},
         WritesPerRequest},
        {"extra_handshakes",
         "beyond one per ten requests, or not resumed",
         Bound::kAtMost,
         0,
         {"handshakes/40"},
         ExtraHandshakes},
        {"log_off_cost",
         "request at log level 0 to one of a module without log",
         Bound::kAtMost,
         1.01,
         {"log_off/100"},
         LogOffCost},
        {"thread_scaling",
         "hosts per second on 64 threads to 1",
         Bound::kAtLeast,
         1.8,
         {"threads/1", "threads/64", "thread_memory/64"},
         ThreadScaling},
    };
    return figures;
}

const std::vector<Note>& Notes() {
    static const std::vector<Note> notes = {
        {"requests of the built-in host's inventory, challenges included", "inventory/10",
         "requests"},
        {"of them challenges", "inventory/10", "challenges"},
        {"connections of the built-in host's inventory", "inventory/10", "connections"},
        {"megabytes of memory per additional host", "thread_memory/64", "megabytes"},
    };
    return notes;
}

}  // namespace bench
