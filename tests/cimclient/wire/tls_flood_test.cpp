// Records of TLS as only a hostile host sends them.
#include <openssl/ssl.h>

#include "cimclient/wire/wire_test.h"

namespace {

using namespace Pegasus;
using namespace support;

constexpr const char* kEndedEarly =
    "CIMClientMalformedHTTPException [Connection closed by CIM Server.]";
constexpr const char* kEndedAtLimit = "ConnectionTimeoutException [connection timed out]";
constexpr int kEndless = 1'000'000'000;
/// No test waits for it.
constexpr unsigned kBeyondTheTest = 110'000;
/// What a record may hold, by TLS.
constexpr int kLargestRecord = 16384;

class TlsRecords : public wire::WireTest {
protected:
    void ServeTls(std::vector<Conversation> conversations, bool seals_own_records = true) {
        TlsOptions options;
        options.seals_own_records = seals_own_records;
        server = std::make_unique<ScriptedServer>(std::move(conversations), options);
        client.setTimeout(kBeyondTheTest);
        client.connect("127.0.0.1", server->port(), SSLContext("", nullptr), "root", "secret");
    }
    /// What an enumeration comes to when it is answered by these steps.
    std::string OutcomeOf(const Conversation& steps) {
        client.disconnect();
        ServeTls({Conversation{AwaitRequest()} + steps});
        return Enumerate();
    }
};

TEST_F(TlsRecords, OfAnySizeAreRead) {
    const std::string answer = Answer(
        BodyReturning(NamedInstance("1", "<!--" + std::string(3 * kLargestRecord, ' ') + "-->")));
    for (const int size : {1, 2, 100, kLargestRecord - 1, kLargestRecord}) {
        EXPECT_EQ(OutcomeOf({SendInRecords(answer, size)}), "1 objects") << size;
    }
}

TEST_F(TlsRecords, ThatAreTooLargeEndTheConnection) {
    const std::string answer =
        Answer(BodyReturning(NamedInstance("1", std::string(kLargestRecord, ' '))));
    EXPECT_EQ(OutcomeOf({SendInRecords(answer, kLargestRecord + 1)}), kEndedEarly);
}

TEST_F(TlsRecords, WithoutContentMayComeBeforeAnAnswer) {
    for (const std::size_t padding : {0U, 1U, 100U, 1000U}) {
        EXPECT_EQ(OutcomeOf({SendRecords({TlsRecord::kContent, "", padding}, 30),
                             SendInRecords(AnswerOf(1), 100)}),
                  "1 objects")
            << padding;
    }
}

/// What a host may send at any length though it says nothing.
struct Flood {
    const char* name;
    Step step;
    bool seals_own_records = false;
};

void PrintTo(const Flood& flood, std::ostream* out) { *out << flood.name; }

const Flood kFloods[] = {
    {"Tickets", SendTickets(kEndless)},
    {"KeyUpdates", SendKeyUpdates(kEndless)},
    {"EmptyRecords", SendRecords({TlsRecord::kContent, "", 0}, kEndless), true},
    {"PaddedRecords", SendRecords({TlsRecord::kContent, "", kLargestRecord}, kEndless), true},
    {"Warnings", SendRecords({TlsRecord::kAlert, std::string("\1\x5A", 2), 0}, kEndless), true},
};

class TlsFlood : public TlsRecords, public ::testing::WithParamInterface<Flood> {};

TEST_P(TlsFlood, InPlaceOfAnAnswerEndsTheConnectionBeforeAnyLimit) {
    ServeTls({{AwaitRequest(), GetParam().step}}, GetParam().seals_own_records);
    EXPECT_EQ(Enumerate(), kEndedEarly);
}

TEST_P(TlsFlood, WithinAnAnswerEndsTheConnectionBeforeAnyLimit) {
    const std::string begin = AnswerHead({"Transfer-Encoding: chunked"});
    const bool own = GetParam().seals_own_records;
    ServeTls({{AwaitRequest(), own ? SendInRecords(begin, 1000) : Send(begin), GetParam().step}},
             own);
    EXPECT_NE(Enumerate(), kEndedAtLimit);
}

TEST_P(TlsFlood, OnAnIdleConnectionMakesItStale) {
    const bool own = GetParam().seals_own_records;
    ServeTls({{AwaitRequest(), own ? SendInRecords(AnswerOf(1), 1000) : Send(AnswerOf(1)),
               GetParam().step},
              {AwaitRequest(), own ? SendInRecords(AnswerOf(2), 1000) : Send(AnswerOf(2))}},
             own);
    EXPECT_EQ(Enumerate(), "1 objects");
    EXPECT_EQ(Enumerate(), "2 objects");
}

INSTANTIATE_TEST_SUITE_P(Of, TlsFlood, ::testing::ValuesIn(kFloods),
                         [](const auto& test) { return std::string(test.param.name); });

/// The host takes none of the answers, which soon fill what lies between.
TEST_F(TlsRecords, ThatAskForKeyUpdatesEndAtTheLimitOrBefore) {
    ServeTls({{AwaitRequest(), AskForKeyUpdates(kEndless)}}, false);
    client.setTimeout(wire::kShortTimeout);
    EXPECT_THAT(Enumerate(), ::testing::AnyOf(kEndedAtLimit, kEndedEarly));
}

}  // namespace
