// From a record's text to the typed value, and back.
#include "schema/cell.h"

#include <gmock/gmock.h>

#include "schema/host_kinds.h"

namespace {

using namespace schema;
using testing::ElementsAre;
using testing::VariantWith;

TEST(Cell, IsNullForWhatTheHostDidNotSay) {
    for (const Type type : {Type::kText, Type::kInteger, Type::kBoolean, Type::kDateTime,
                            Type::kTextList, Type::kIntegerList}) {
        EXPECT_TRUE(IsNull(CellOf(type, ""))) << WordOf(type);
    }
}

TEST(Cell, HasItsType) {
    EXPECT_EQ(CellOf(Type::kInteger, "-9223372036854775808"),
              Cell(std::numeric_limits<std::int64_t>::min()));
    EXPECT_EQ(CellOf(Type::kBoolean, "TRUE"), Cell(true));
    EXPECT_EQ(CellOf(Type::kBoolean, "FALSE"), Cell(false));
    EXPECT_THAT(CellOf(Type::kTextList, "aa bb  cc "),
                VariantWith<TextList>(ElementsAre("aa", "bb", "", "cc")));
    EXPECT_THAT(CellOf(Type::kIntegerList, "7 -8"), VariantWith<IntegerList>(ElementsAre(7, -8)));
}

TEST(Cell, IsTheTextWhereItDoesNotFitTheType) {
    const std::pair<Type, const char*> cases[] = {{Type::kInteger, "9223372036854775808"},
                                                  {Type::kInteger, "12 MB"},
                                                  {Type::kInteger, " 12"},
                                                  {Type::kBoolean, "true"},
                                                  {Type::kDateTime, "yesterday"},
                                                  {Type::kIntegerList, "1 x 2"},
                                                  {Type::kIntegerList, "1  2"}};
    for (const auto& [type, text] : cases) {
        EXPECT_EQ(CellOf(type, text), Cell(std::string_view(text))) << text;
    }
}

TEST(Cell, IsMadeAgainFromItsText) {
    const std::pair<Type, const char*> cases[] = {
        {Type::kText, "x"},         {Type::kInteger, "-12"},
        {Type::kBoolean, "FALSE"},  {Type::kDateTime, "20260312081530.000000+060"},
        {Type::kTextList, "a  b "}, {Type::kIntegerList, "1 2"}};
    for (const auto& [type, text] : cases) {
        const Cell cell = CellOf(type, text);
        const std::string again = TextOf(cell);
        EXPECT_EQ(CellOf(type, again), cell) << text;
    }
}

TEST(Records, GiveTheValuesThatTheirMembersHold) {
    RecordsOf events(kEvents);
    events.Append();
    events.records[0].record_id = static_cast<std::uint64_t>(-5);
    events.records[0].message = "hot";
    EXPECT_EQ(events.At(0, PlaceOf(kEvents, "record_id")), Cell(std::int64_t{-5}));
    EXPECT_EQ(events.At(0, PlaceOf(kEvents, "message")), Cell(std::string_view("hot")));
    EXPECT_TRUE(IsNull(events.At(0, PlaceOf(kEvents, "time"))));
}

TEST(Records, AreMadeFromValuesToo) {
    const auto events = kEvents.MakeRecords();
    events->Append();
    events->Set(0, PlaceOf(kEvents, "record_id"), std::int64_t{7});
    events->Set(0, PlaceOf(kEvents, "time"), *DateTimeOfIso8601("2026-03-12T08:15:30+01:00"));
    const auto& typed = dynamic_cast<RecordsOf<Zentar::ZentarAgentless::IPMIEVENT, 4>&>(*events);
    EXPECT_EQ(typed.records[0].record_id, 7U);
    EXPECT_EQ(typed.records[0].time_stamp, "20260312081530.000000+060");
}

TEST(Records, OfOneRecordAreNeverEmpty) { EXPECT_EQ(kSystem.MakeRecords()->size(), 1U); }

}  // namespace
