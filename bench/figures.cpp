#include "figure.h"

namespace bench {

namespace {

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
    return Counter(readings, "growth/40000", "ratio");
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

double AckWait(const Readings& readings) {
    return TimeRatio(readings, "nagle/100", "no_delay/100");
}

double ThreadCost(const Readings& readings) {
    return TimeRatio(readings, "threads/64", "threads/1");
}

}  // namespace

const std::vector<Figure>& Figures() {
    static const std::vector<Figure> figures = {
        {"decode_cpu",
         "processor time of a reply to pugixml's in-place parse",
         2.0,
         {"decode/10000", "parse/10000"},
         DecodeCpu},
        {"module_cpu",
         "the same through the module, records filled",
         2.2,
         {"module/10000", "parse/10000"},
         ModuleCpu},
        {"decode_memory",
         "growth of peak memory to the reply's size",
         2.5,
         {"decode_memory/10000"},
         DecodeMemory},
        {"decode_growth",
         "processor time of 40,000 instances to 1,000",
         42,
         {"growth/40000"},
         DecodeGrowth},
        {"inventory_latency",
         "inventory to the link's round trips, 10 ms each",
         1.05,
         {"inventory/10"},
         InventoryLatency},
        {"ack_wait",
         "inventory from a server with Nagle's algorithm to one without",
         1.15,
         {"nagle/100", "no_delay/100"},
         AckWait},
        {"writes_per_request", "TCP segments of a request", 1, {"writes/100"}, WritesPerRequest},
        {"extra_handshakes",
         "beyond one per ten requests, or not resumed",
         0,
         {"handshakes/40"},
         ExtraHandshakes},
        {"log_off_cost",
         "request at log level 0 to one of a module without log",
         1.01,
         {"log_off/100"},
         LogOffCost},
        {"thread_cost",
         "processor time of a host with 64 threads to 1",
         1.15,
         {"threads/1", "threads/64", "thread_memory/64"},
         ThreadCost},
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
