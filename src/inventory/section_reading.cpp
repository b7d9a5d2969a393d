#include "inventory/section_reading.h"

#include <algorithm>
#include <utility>

#include "inventory/table_status.h"
#include "module/exsi/kalvex.h"

namespace inventory {

namespace {

bool HasFailed(const Table& table) {
    return table.status != Status::kOk && table.status != Status::kPartial;
}

SectionReading Complete(const Section& section, SectionContent content,
                        Zentar::FailureList failures) {
    SectionReading reading{section.name, std::move(content), std::move(failures.failures),
                           failures.dropped};
    JudgeTables(reading.content, reading.failures);
    reading.status = StatusOf(reading.content.tables);
    if (std::ranges::any_of(reading.content.tables, HasFailed)) {
        reading.content.result = 1;
    }
    return reading;
}

}  // namespace

SectionReading ReadSection(const Section& section, Zentar::Agentless::Kalvex& host) {
    SectionContent content = section.read(&host);
    return Complete(section, std::move(content), host.TakeFailures());
}

SectionReading FailedSection(const Section& section) {
    return Complete(section, section.read(nullptr), {});
}

}  // namespace inventory
