// What came of a run, and how far it is, in words.
#include "fleet/summary.h"

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "fleet/progress_text.h"

namespace {

using namespace fleet;
using namespace std::chrono_literals;
using inventory::Document;
using inventory::Status;
using testing::HasSubstr;
using Zentar::FailureKind;

HostEntry Host(const std::string& name) {
    HostEntry entry;
    entry.host = name;
    entry.port = 5989;
    return entry;
}

Document Of(Status status, std::vector<FailureKind> kinds = {}) {
    Document document;
    document.status = status;
    for (const FailureKind kind : kinds) {
        document.failures.push_back({"os", kind, 0, "", "x"});
    }
    return document;
}

Summary Example() {
    Summary summary;
    summary.Add(Host("good"), Of(Status::kOk, {FailureKind::kUnknownClass}));
    for (int i = 1; i <= 7; ++i) {
        summary.Add(Host("dead" + std::to_string(i)),
                    Of(Status::kFailed, {FailureKind::kUnreachable, FailureKind::kUnreachable}));
    }
    summary.SetRest(2);
    summary.SetDuration(12345ms);
    return summary;
}

TEST(Summary, CountsHostsAndNamesTheFirstOfEachFailure) {
    std::ostringstream out;
    Example().WriteText(out);
    EXPECT_EQ(out.str(),
              "10 hosts: 1 ok, 0 partial, 7 failed, 2 not read; 12.3 s\n"
              "  the host could not be reached, or closed the connection unanswered (7): "
              "dead1:5989, dead2:5989, dead3:5989, dead4:5989, dead5:5989 and 2 more\n");
}

TEST(Summary, NamesEveryHostInJson) {
    std::ostringstream out;
    Example().WriteJson(out);
    const auto json = nlohmann::json::parse(out.str());
    EXPECT_EQ(json["hosts"], 10);
    EXPECT_EQ(json["failed"], 7);
    EXPECT_EQ(json["not_read"], 2);
    EXPECT_EQ(json["failures"]["unreachable"].size(), 7U);
    EXPECT_FALSE(json["failures"].contains("unknown_class"));
}

TEST(ProgressText, SaysHowFarTheRunIs) {
    const RunState state{500, 120, 3, 64, "esx07:5989", 41000ms};
    EXPECT_EQ(ProgressText(state, 10000ms, 200),
              "120 of 500 hosts, 3 not whole, 64 under way, 12.0/s, about 32 s left, slowest "
              "esx07:5989 (41 s)");
}

TEST(ProgressText, LeavesOutWhatDoesNotFit) {
    const RunState state{500, 120, 3, 64, "esx07:5989", 41000ms};
    EXPECT_EQ(ProgressText(state, 10000ms, 35), "120 of 500 hosts, 3 not whole");
    EXPECT_EQ(ProgressText({5, 0, 0, 5, "", 0ms}, 0ms, 200),
              "0 of 5 hosts, 0 not whole, 5 under way");
}

}  // namespace
