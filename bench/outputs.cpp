// What writing a long event log takes: processor time a record, and the peak of memory against what
// the records themselves take.
#include <cstdio>
#include <exception>
#include <functional>
#include <ostream>
#include <streambuf>

#include "inventory/document.h"
#include "outputs/json/json_output.h"
#include "outputs/text/text_output.h"
#include "process_use.h"
#include "schema/host_kinds.h"

namespace {

constexpr std::size_t kRecords = 100'000;

/// Takes everything and keeps nothing.
class NullBuffer : public std::streambuf {
protected:
    std::streamsize xsputn(const char* /*text*/, std::streamsize size) override { return size; }
    int_type overflow(int_type character) override { return traits_type::not_eof(character); }
};

inventory::Document EventLog() {
    using Events = decltype(schema::kEvents)::TypedRecords;
    inventory::Document document;
    document.host = "esx01";
    auto records = schema::kEvents.MakeRecords();
    auto& events = static_cast<Events&>(*records).records;
    events.reserve(kRecords);
    for (std::size_t i = 0; i < kRecords; ++i) {
        auto& event = events.emplace_back();
        event.record_id = i;
        event.time_stamp = "20260312081530.000000+060";
        event.message = "Assert + Temperature Ambient Temp Upper Non-critical going high, " +
                        std::to_string(i) + " degrees";
    }
    document.sections.push_back({std::move(records)});
    return document;
}

void Report(const char* what, std::size_t own, const std::function<void(std::ostream&)>& write) {
    NullBuffer nowhere;
    std::ostream out(&nowhere);
    const bench::PeakMemory peak;
    const double before = bench::ProcessorSeconds();
    write(out);
    const double seconds = bench::ProcessorSeconds() - before;
    std::printf("%-16s %6.0f ns/record, memory %.2f times the records' own\n", what,
                seconds * 1e9 / kRecords,
                static_cast<double>(own + peak.Growth()) / static_cast<double>(own));
}

void ReportAll() {
    const std::size_t before = bench::ResidentBytes();
    const inventory::Document document = EventLog();
    const std::size_t own = bench::ResidentBytes() - before;
    for (const std::size_t columns : {40U, 100U, 200U}) {
        const std::string what = "text, " + std::to_string(columns);
        Report(what.c_str(), own, [&](std::ostream& out) {
            outputs::WriteText(document, {columns, false}, out);
        });
    }
    Report("JSON", own, [&](std::ostream& out) {
        outputs::WriteJson(document, out, outputs::JsonLayout::kIndented);
    });
}

}  // namespace

int main() {
    try {
        ReportAll();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "outputs_bench: %s\n", error.what());
        return 1;
    }
}
