#include "inventory/event_filter.h"

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include "schema/date_time.h"
#include "schema/host_kinds.h"

namespace inventory {

namespace {

constexpr std::int64_t kNewest = std::numeric_limits<std::int64_t>::max();

std::vector<std::int64_t> TimesOf(const schema::Records& events) {
    const std::size_t field = PlaceOf(schema::kEvents, "time");
    std::vector<std::int64_t> times;
    for (std::size_t i = 0; i < events.size(); ++i) {
        const schema::Cell cell = events.At(i, field);
        const auto* const time = std::get_if<schema::DateTime>(&cell);
        times.push_back(time == nullptr ? kNewest : MicrosecondsUtcOf(*time));
    }
    return times;
}

/// In ascending order.
std::vector<std::size_t> WantedPlaces(const EventFilter& filter,
                                      const std::vector<std::int64_t>& times) {
    std::vector<std::size_t> wanted;
    for (std::size_t i = 0; i < times.size(); ++i) {
        if (!filter.since || times[i] >= *filter.since) {
            wanted.push_back(i);
        }
    }
    if (filter.last && *filter.last < wanted.size()) {
        std::ranges::stable_sort(wanted, {}, [&times](std::size_t place) { return times[place]; });
        wanted.erase(wanted.begin(), wanted.end() - static_cast<std::ptrdiff_t>(*filter.last));
        std::ranges::sort(wanted);
    }
    return wanted;
}

std::unique_ptr<schema::Records> CopyOf(const schema::Records& events,
                                        const std::vector<std::size_t>& places) {
    auto copy = events.kind().MakeRecords();
    for (const std::size_t place : places) {
        copy->Append();
        for (std::size_t field = 0; field < events.kind().fields().size(); ++field) {
            copy->Set(copy->size() - 1, field, events.At(place, field));
        }
    }
    return copy;
}

}  // namespace

std::optional<std::int64_t> PointInTimeOf(std::string_view text) {
    const bool has_time = text.find('T') != std::string_view::npos;
    const auto time = schema::DateTimeOfIso8601(std::string(text) + (has_time ? "" : "T00:00:00Z"));
    return time ? std::optional(MicrosecondsUtcOf(*time)) : std::nullopt;
}

bool GiveEvents(std::span<const Section> sections) {
    return std::ranges::any_of(sections, [](const Section& section) {
        return std::ranges::count(section.kinds, &schema::kEvents) > 0;
    });
}

void KeepEvents(const EventFilter& filter, Document& document) {
    for (SectionResult& section : document.sections) {
        if (filter.IsSet() && &section.kind() == &schema::kEvents) {
            section.records =
                CopyOf(*section.records, WantedPlaces(filter, TimesOf(*section.records)));
        }
    }
}

}  // namespace inventory
