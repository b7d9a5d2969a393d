// What the command says about failures, and how it goes on after them.
#include <gmock/gmock.h>

#include <sstream>

#include "cli/failure_report.h"
#include "cli/loopback.h"

namespace {

using namespace command;
using Zentar::Failure;
using Zentar::FailureKind;
using Zentar::FailurePhase;

Failure Of(FailureKind kind, const char* text, const char* class_name) {
    Failure failure;
    failure.kind = kind;
    failure.text = text;
    failure.class_name = class_name;
    return failure;
}

std::string Written(const FailureReport& report) {
    std::ostringstream out;
    report.Write(out);
    return out.str();
}

TEST(FailureReport, ReportsEachFailureOnceWithItsSections) {
    FailureReport report;
    const Failure refused = Of(FailureKind::kCredentialsRefused, "HTTP Error (401).", "A");
    Failure skipped = Of(FailureKind::kCredentialsRefused, "HTTP Error (401).", "B");
    skipped.was_asked = false;
    report.Add("system", {refused, refused});
    report.Add("os", {skipped});
    report.Add("pci", {Of(FailureKind::kCimError, "odd\x1B\nline", "B"),
                       Of(FailureKind::kCimError, "", "C")});
    EXPECT_EQ(Written(report),
              "kalvex: system, os: the host refused the user name or password, or the account "
              "lacks the CIM permission (HTTP Error (401).); check --user and the password\n"
              "kalvex: pci: the host reported an error (odd\\x1B\\nline); try again, and look "
              "into the host's CIM service if it persists\n"
              "kalvex: pci: the host reported an error (no reason given for C); try again, and "
              "look into the host's CIM service if it persists\n");
}

TEST(FailureReport, SaysWhatWasUnderWay) {
    FailureReport report;
    Failure timed_out = Of(FailureKind::kTimedOut, "", "");
    timed_out.phase = FailurePhase::kTlsHandshake;
    report.Add("connecting", {timed_out});
    EXPECT_THAT(Written(report),
                testing::StartsWith("kalvex: connecting: the host did not answer "
                                    "in time (while making the TLS connection); "));
}

TEST(FailureReport, SaysThatSomeWereTooMany) {
    FailureReport report;
    EXPECT_EQ(Written(report), "");
    inventory::Document document;
    document.dropped_failures = 7;
    report.Add("connecting", document);
    EXPECT_EQ(Written(report), "kalvex: 7 more failures were too many to be kept\n");
}

/// As many failures as there are numbers, each of another text.
std::vector<Failure> Different(int count) {
    std::vector<Failure> failures;
    for (int i = 1; i <= count; ++i) {
        const std::string text = std::string(1000, 'x') + std::to_string(i);
        failures.push_back(Of(FailureKind::kCimError, text.c_str(), "A"));
    }
    return failures;
}

std::ptrdiff_t LinesOf(const std::string& text) { return std::ranges::count(text, '\n'); }

TEST(FailureReport, ReportsTheFirstTwentyAndHowManyMore) {
    FailureReport report;
    report.Add("pci", Different(20));
    EXPECT_EQ(LinesOf(Written(report)), 20);
    report.Add("pci", Different(4000));
    report.Add("system", Different(4000));
    const std::string written = Written(report);
    EXPECT_EQ(LinesOf(written), 21);
    EXPECT_THAT(written, testing::HasSubstr("kalvex: pci, system: the host reported"));
    EXPECT_THAT(written, testing::HasSubstr("x20); try"));
    EXPECT_THAT(written,
                testing::EndsWith("kalvex: and 3980 more failures; --format json lists each\n"));
}

TEST(Loopback, IsThisMachineAlone) {
    for (const char* host : {"127.0.0.1", "127.255.0.9", "::1", "0:0:0:0:0:0:0:1", "LocalHost"}) {
        EXPECT_TRUE(IsLoopback(host)) << host;
    }
    for (const char* host :
         {"128.0.0.1", "10.127.0.1", "::2", "localhost.example.com", "esx", ""}) {
        EXPECT_FALSE(IsLoopback(host)) << host;
    }
}

}  // namespace
