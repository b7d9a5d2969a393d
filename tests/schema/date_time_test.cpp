// Dates from CIM's form to ISO 8601 and back.
#include "schema/date_time.h"

#include <gtest/gtest.h>

namespace {

using namespace schema;

std::string Iso(const char* cim) {
    const auto time = DateTimeOfCim(cim);
    return time ? Iso8601Of(*time) : "none";
}

TEST(DateTime, GivesTheHostsOffset) {
    EXPECT_EQ(Iso("20260312081530.000000+060"), "2026-03-12T08:15:30+01:00");
    EXPECT_EQ(Iso("20260312081530.000000-210"), "2026-03-12T08:15:30-03:30");
    EXPECT_EQ(Iso("20100507123553.000000-000"), "2010-05-07T12:35:53+00:00");
}

TEST(DateTime, GivesMicrosecondsOnlyWhenThereAreAny) {
    EXPECT_EQ(Iso("20260312081530.000500+000"), "2026-03-12T08:15:30.000500+00:00");
}

TEST(DateTime, IsNothingForWhatIsNoPointInTime) {
    for (const char* text :
         {"", "00000010000000.000000:000", "2026031208****.******+060", "20260230081530.000000+000",
          "20261312081530.000000+000", "20260312241530.000000+000", "20260312086030.000000+000",
          "20260312081530.000000+00", "20260312081530.000000+0000", "20260312081530,000000+000",
          "20260312081530.000000*000", "2026-03-12T08:15:30+01:00"}) {
        EXPECT_EQ(Iso(text), "none") << text;
    }
}

TEST(DateTime, IsReadBackFromBothForms) {
    for (const char* text : {"20260312081530.000000+060", "20260312081530.123456-210",
                             "00010101000000.000001+000", "99991231235959.999999+999"}) {
        const auto time = DateTimeOfCim(text);
        ASSERT_TRUE(time) << text;
        EXPECT_EQ(CimTextOf(*time), text);
        EXPECT_EQ(DateTimeOfIso8601(Iso8601Of(*time)), time) << text;
    }
}

TEST(DateTime, ReadsIsoFormsOfOtherPrograms) {
    EXPECT_EQ(DateTimeOfIso8601("2026-03-12T08:15:30Z"),
              DateTimeOfCim("20260312081530.000000+000"));
    EXPECT_EQ(DateTimeOfIso8601("2026-03-12T08:15:30.1234567+01:00"),
              DateTimeOfCim("20260312081530.123456+060"));
    for (const char* text : {"2026-03-12", "2026-03-12T08:15:30", "2026-03-12T08:15:30.Z",
                             "2026-03-12T08:15:30+0100", "2026-03-12T08:15:30Z "}) {
        EXPECT_FALSE(DateTimeOfIso8601(text)) << text;
    }
}

TEST(DateTime, ComparesPointsInTimeOfDifferentOffsets) {
    const auto utc = [](const char* text) { return MicrosecondsUtcOf(*DateTimeOfCim(text)); };
    EXPECT_EQ(utc("20260312081530.000000+060"), utc("20260312071530.000000+000"));
    EXPECT_EQ(utc("19700101000001.000002+000"), 1'000'002);
    EXPECT_LT(utc("20260312081530.000000+060"), utc("20260312081530.000000+000"));
}

TEST(DateTime, IsReadableForPeople) {
    EXPECT_EQ(ReadableTextOf(*DateTimeOfCim("20260312081530.000000+060")),
              "2026-03-12 08:15:30 +01:00");
}

}  // namespace
