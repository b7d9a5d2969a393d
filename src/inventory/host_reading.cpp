#include "inventory/host_reading.h"

#include <algorithm>
#include <iterator>
#include <new>
#include <unordered_set>

#include "inventory/failure_meanings.h"
#include "inventory/section_status.h"
#include "module/exsi/kalvex.h"

namespace inventory {

using std::chrono::steady_clock;
using Zentar::Failure;

namespace {

/// Without records.
std::vector<SectionResult> EmptyResults(const Section& section) {
    std::vector<SectionResult> results;
    for (const schema::RecordKind* kind : section.kinds) {
        results.push_back({kind->MakeRecords()});
    }
    return results;
}

DocumentFailure InWords(const std::string& section, const Failure& failure) {
    return {section, failure.kind, failure.code, failure.class_name, DescribeFailure(failure)};
}

/// Two failures of the same key are one.
std::string KeyOf(const DocumentFailure& failure) {
    return failure.section + '\0' + failure.class_name + '\0' + failure.message;
}

}  // namespace

HostReading::HostReading(std::string host, std::uint16_t port, std::string transport,
                         steady_clock::time_point begun)
    : begun_(begun) {
    const auto elapsed =
        std::chrono::duration_cast<std::chrono::milliseconds>(steady_clock::now() - begun);
    document_.host = std::move(host);
    document_.port = port;
    document_.transport = std::move(transport);
    document_.started_at = std::chrono::system_clock::now() - elapsed;
}

void HostReading::NoteConnecting(const Zentar::FailureList& failures) {
    Note(failures, [](const Failure& /*failure*/) { return std::string(); });
}

void HostReading::Note(const Zentar::FailureList& met,
                       const std::function<std::string(const Failure&)>& section_of) {
    std::unordered_set<std::string> known;
    for (const Failure& failure : met.failures) {
        DocumentFailure words = InWords(section_of(failure), failure);
        if (known.insert(KeyOf(words)).second) {
            document_.failures.push_back(std::move(words));
        }
    }
    document_.dropped_failures += met.dropped;
}

void HostReading::Read(Zentar::Agentless::Kalvex& host, std::span<const Section> sections,
                       const std::function<void(const Section&, std::size_t)>& before_each) {
    std::size_t number = 0;
    for (const Section& section : sections) {
        if (before_each) {
            before_each(section, ++number);
        }
        ReadSection(host, section);
    }
}

void HostReading::ReadSection(Zentar::Agentless::Kalvex& host, const Section& section) {
    constexpr int kFailed = 1;
    std::vector<SectionResult> results = EmptyResults(section);
    int result = kFailed;
    Zentar::FailureList met;
    if (!ran_out_of_memory_) {
        try {
            result = section.read(host, results);
            met = host.TakeFailures();
        } catch (const std::bad_alloc&) {
            ran_out_of_memory_ = true;
            results = EmptyResults(section);
            result = kFailed;
        }
    }
    JudgeSections(result, met.failures, results);
    Note(met, [&results](const Failure& failure) { return SectionOf(failure, results); });
    std::ranges::move(results, std::back_inserter(document_.sections));
}

void HostReading::Skip(std::span<const Section> sections, DocumentFailure reason) {
    for (const Section& section : sections) {
        for (SectionResult& result : EmptyResults(section)) {
            result.status = Status::kSkipped;
            result.cause = reason.kind;
            document_.sections.push_back(std::move(result));
        }
    }
    document_.failures.push_back(std::move(reason));
}

bool HostReading::HasRead() const {
    return std::ranges::any_of(document_.sections, &SectionResult::WasRead);
}

Document HostReading::Finish(bool is_strict) {
    document_.duration =
        std::chrono::duration_cast<std::chrono::milliseconds>(steady_clock::now() - begun_);
    document_.status = StatusOfWhole(document_.sections, is_strict);
    return std::move(document_);
}

}  // namespace inventory
