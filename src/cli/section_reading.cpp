#include "cli/section_reading.h"

#include <algorithm>

#include "cli/failure_report.h"

namespace command {

namespace {

/// The failure that cost a table, or null.
const Failure* CauseOf(const Table& table, const std::vector<Failure>& failures) {
    const std::string class_name = table.head.class_name;
    const auto cause = std::ranges::find_if(failures, [&](const Failure& failure) {
        const bool own = !class_name.empty() && failure.class_name == class_name;
        return failure.whole_request && (table.failed || own);
    });
    return cause == failures.end() ? nullptr : &*cause;
}

void MarkFailures(SectionReading& reading) {
    for (Table& table : reading.content.tables) {
        const Failure* cause = CauseOf(table, reading.failures);
        table.failed = table.failed || cause != nullptr;
        if (table.failed) {
            table.failure = cause != nullptr ? DescribeFailure(*cause) : "the log tells more";
            reading.content.result = 1;
        }
    }
}

bool NothingRead(const Table& table) {
    return table.failed && (table.rows.empty() || table.head.shape == Shape::kOneRecord);
}

Outcome OutcomeOf(const SectionContent& content) {
    if (content.result == 0) {
        return Outcome::kRead;
    }
    return std::ranges::all_of(content.tables, NothingRead) ? Outcome::kFailed
                                                            : Outcome::kReadInPart;
}

SectionReading Complete(SectionContent content, std::vector<Failure> failures) {
    SectionReading reading{std::move(content), std::move(failures)};
    MarkFailures(reading);
    reading.outcome = OutcomeOf(reading.content);
    return reading;
}

}  // namespace

SectionReading ReadSection(const Section& section, Zentar::Agentless::Kalvex& host,
                           FailureLog& log) {
    SectionContent content = section.read(&host);
    return Complete(std::move(content), log.Take());
}

SectionReading SkipSection(const Section& section, const std::vector<Failure>& failures) {
    return Complete(section.read(nullptr), failures);
}

}  // namespace command
