// Which events of a document are wanted.
#include "inventory/event_filter.h"

#include <gmock/gmock.h>

#include "schema/host_kinds.h"
#include "support/documents.h"

namespace {

using inventory::EventFilter;
using inventory::PointInTimeOf;
using testing::ElementsAre;
using testing::IsEmpty;

inventory::Document Events() {
    return support::DocumentOf(support::Section(
        schema::kEvents,
        {{{"record_id", "4"}, {"time", "20260313000000.000000+000"}, {"message", "four"}},
         {{"record_id", "1"}, {"time", "20260310000000.000000+000"}},
         {{"record_id", "2"}, {"time", "unknown"}},
         {{"record_id", "3"}, {"time", "20260312003000.000000+060"}}}));
}

std::vector<std::int64_t> Kept(const EventFilter& filter, inventory::Document document = Events()) {
    KeepEvents(filter, document);
    const schema::Records& events = *document.Find(schema::kEvents)->records;
    std::vector<std::int64_t> ids;
    for (std::size_t i = 0; i < events.size(); ++i) {
        ids.push_back(std::get<std::int64_t>(events.At(i, PlaceOf(events.kind(), "record_id"))));
    }
    return ids;
}

TEST(EventFilter, WithoutAWishKeepsAll) { EXPECT_THAT(Kept({}), ElementsAre(4, 1, 2, 3)); }

TEST(EventFilter, SinceKeepsLaterOnesAndThoseOfUnknownTime) {
    EXPECT_THAT(Kept({.since = PointInTimeOf("2026-03-12")}), ElementsAre(4, 2));
    EXPECT_THAT(Kept({.since = PointInTimeOf("2026-03-12T00:30:00+01:00")}), ElementsAre(4, 2, 3));
}

TEST(EventFilter, LastKeepsTheNewestInTheirOrder) {
    EXPECT_THAT(Kept({.last = 1}), ElementsAre(2));
    EXPECT_THAT(Kept({.last = 3}), ElementsAre(4, 2, 3));
    EXPECT_THAT(Kept({.last = 9}), ElementsAre(4, 1, 2, 3));
}

TEST(EventFilter, BothNarrowTogether) {
    EXPECT_THAT(Kept({.since = PointInTimeOf("2026-03-11"), .last = 2}), ElementsAre(4, 2));
    EXPECT_THAT(Kept({.since = PointInTimeOf("2026-03-11")},
                     support::DocumentOf(support::Section(schema::kEvents, {}))),
                IsEmpty());
}

TEST(EventFilter, KeepsWholeRecords) {
    inventory::Document document = Events();
    KeepEvents({.since = PointInTimeOf("2026-03-13")}, document);
    const schema::Records& events = *document.Find(schema::kEvents)->records;
    EXPECT_EQ(std::get<std::string_view>(events.At(0, PlaceOf(events.kind(), "message"))), "four");
    EXPECT_EQ(std::get<std::string_view>(events.At(1, PlaceOf(events.kind(), "time"))), "unknown");
}

TEST(EventFilter, DatesBeginAtMidnightUtc) {
    EXPECT_EQ(PointInTimeOf("1970-01-02"), 86'400'000'000);
    EXPECT_EQ(PointInTimeOf("1970-01-01T01:00:00.5+01:00"), 500'000);
    for (const char* text : {"", "1970-02-30", "1970-01-02T", "yesterday", "1970-01-02T01:00:00"}) {
        EXPECT_EQ(PointInTimeOf(text), std::nullopt) << text;
    }
}

}  // namespace
