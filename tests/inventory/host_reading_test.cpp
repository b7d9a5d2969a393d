// Reading a host into a document.
#include "inventory/host_reading.h"

#include <gmock/gmock.h>

#include <new>

#include "module/exsi/kalvex.h"
#include "schema/host_kinds.h"

namespace {

using namespace inventory;
using std::chrono::steady_clock;
using testing::ElementsAre;
using Zentar::Agentless::Kalvex;
using Results = std::span<const SectionResult>;

constexpr const schema::RecordKind* kOs[] = {&schema::kOs};

constexpr Section kOneThing{"first", kOs, [](Kalvex& /*host*/, Results results) {
                                results[0].records->Set(0, 0, std::string_view("read"));
                                return 0;
                            }};
constexpr Section kTooMuch{
    "second", kOs, [](Kalvex& /*host*/, Results /*results*/) -> int { throw std::bad_alloc(); }};

TEST(HostReading, KeepsWhatWasReadBeforeMemoryRanOut) {
    Kalvex nowhere({}, {});
    nowhere.TakeFailures();
    HostReading reading("esx01", 5989, "https", steady_clock::now());
    std::vector<std::string> begun;
    reading.Read(nowhere, std::vector<Section>{kOneThing, kTooMuch, kOneThing},
                 [&](const Section& section, std::size_t number) {
                     begun.push_back(section.name + std::to_string(number));
                 });
    EXPECT_TRUE(reading.RanOutOfMemory());
    EXPECT_THAT(begun, ElementsAre("first1", "second2", "first3"));
    const Document document = reading.Finish();
    ASSERT_EQ(document.sections.size(), 3U);
    EXPECT_EQ(document.sections[0].records->At(0, 0), schema::Cell(std::string_view("read")));
    EXPECT_EQ(document.sections[1].status, Status::kFailed);
    EXPECT_EQ(document.sections[2].status, Status::kFailed);
    EXPECT_EQ(document.status, Status::kPartial);
}

TEST(HostReading, NotesEachFailureOfConnectingOnce) {
    HostReading reading("esx01", 5989, "https", steady_clock::now());
    Zentar::Failure refused;
    refused.kind = Zentar::FailureKind::kUnreachable;
    reading.NoteConnecting({{refused, refused}, 3});
    const Document document = reading.Finish();
    ASSERT_EQ(document.failures.size(), 1U);
    EXPECT_EQ(document.failures[0].section, "");
    EXPECT_EQ(document.dropped_failures, 3U);
}

}  // namespace
