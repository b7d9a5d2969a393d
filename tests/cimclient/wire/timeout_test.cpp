#include "cimclient/wire/wire_test.h"

namespace {

using namespace support;

constexpr unsigned kPatience = 20'000;
constexpr const char* kTimedOut = "ConnectionTimeoutException [connection timed out]";

class Timeout : public wire::WireTest {
protected:
    /// The outcome of connecting by TLS to a server that plays this.
    std::string HandshakeOutcome(const Conversation& conversation) {
        Serve({conversation});
        client.setTimeout(wire::kShortTimeout);
        const std::string outcome = FailureOf([this] {
            client.connect("127.0.0.1", server->port(), Pegasus::SSLContext("", nullptr), "", "");
        });
        server->AwaitHangUp(0);
        return outcome;
    }

    void ConnectOverTls(const Conversation& conversation) {
        client.disconnect();
        server = std::make_unique<ScriptedServer>(
            std::vector<Conversation>{conversation, Replies({AnswerOf(1)})}, TlsOptions());
        client.connect("127.0.0.1", server->port(), Pegasus::SSLContext("", nullptr), "", "");
    }

    /// An operation that ends at the time limit, and then one without haste.
    void ExpectTimeoutAndRecovery() {
        client.setTimeout(wire::kShortTimeout);
        EXPECT_EQ(Enumerate(), kTimedOut);
        server->AwaitHangUp(0);
        client.setTimeout(kPatience);
        EXPECT_EQ(Enumerate(), "1 objects") << "the next operation connects again by itself";
    }

    /// The outcome of an operation on a server that plays this, and then of one on a sound server.
    void ExpectTimeout(const Conversation& conversation) {
        client.disconnect();
        Serve({conversation, Replies({AnswerOf(1)})});
        Connect();
        ExpectTimeoutAndRecovery();
        EXPECT_EQ(server->connections(), 2U);
    }
};

TEST_F(Timeout, IsTwentySecondsAtFirst) {
    EXPECT_EQ(Pegasus::CIMClient().getTimeout(), 20000U);
    client.setTimeout(1234);
    EXPECT_EQ(client.getTimeout(), 1234U);
}

TEST_F(Timeout, EndsTheWaitForAnAnswer) { ExpectTimeout({AwaitRequest()}); }

TEST_F(Timeout, EndsTheWaitForTheRestOfAHead) {
    ExpectTimeout({AwaitRequest(), Send("HTTP/1.1 200 OK\r\nCIMOperation: Meth")});
}

TEST_F(Timeout, EndsTheWaitForTheRestOfABody) {
    const std::string answer = AnswerOf(1);
    ExpectTimeout({AwaitRequest(), Send(answer.substr(0, answer.size() - 10))});
}

TEST_F(Timeout, EndsTheWaitForTheRestOfAChallenge) {
    ExpectTimeout({AwaitRequest(), Send("HTTP/1.1 401 Unauthorized\r\nWWW-Authenticate: Basic "
                                        "realm=\"x\"\r\nContent-Length: 9\r\n\r\nxxx")});
}

TEST_F(Timeout, EndsTheWaitForABodyWithoutLength) {
    ExpectTimeout({AwaitRequest(), Send(AnswerHead() + BodyReturning(""))});
}

TEST_F(Timeout, EndsTheWaitForAChunk) {
    ExpectTimeout({AwaitRequest(), Send(AnswerHead({"Transfer-Encoding: chunked"}) + "5\r\n<?x")});
}

TEST_F(Timeout, IsNotPutOffByBytesThatKeepArriving) {
    ExpectTimeout({AwaitRequest(), Drip("HTTP/1.1 200 OK\r\nX")});
    ExpectTimeout({AwaitRequest(), Drip(AnswerHead() + " ")});
}

TEST_F(Timeout, EndsTheWaitBehindAChallenge) {
    ExpectTimeout({AwaitRequest(), Send(Challenge()), AwaitRequest()});
}

TEST_F(Timeout, EndsAHandshakeThatGoesOnForever) {
    // The beginning of a TLS record that announces more.
    const std::string record("\x16\x03\x03\x10\x00\x02", 6);
    for (const Conversation& conversation :
         {Conversation{AwaitByte()}, {AwaitByte(), Send(record)}, {AwaitByte(), Drip(record)}}) {
        const std::string outcome = HandshakeOutcome(conversation);
        EXPECT_EQ(outcome, "CannotConnectException [Cannot connect to 127.0.0.1:" +
                               std::to_string(server->port()) + ". Connection failed.]");
    }
}

TEST_F(Timeout, EndsTheWaitOverTls) {
    for (const Conversation& conversation :
         {Conversation{AwaitRequest()},
          {AwaitRequest(), Send("HTTP/1.1 200 OK\r\nCIMOperation: Meth")},
          {AwaitRequest(), Send(AnswerHead() + BodyReturning(""))},
          {AwaitRequest(), Drip("HTTP/1.1 200 OK\r\nX")},
          {AwaitRequest(), Drip(AnswerHead() + " ")}}) {
        ConnectOverTls(conversation);
        ExpectTimeoutAndRecovery();
    }
}

TEST_F(Timeout, EndsAWriteThatIsNotTaken) {
    const Pegasus::CIMName name = LongName(20UL << 20);
    Converse({Conversation{AwaitByte(), AwaitCue()}});
    client.setTimeout(wire::kShortTimeout);
    EXPECT_EQ(OutcomeOf([&] { return client.enumerateInstances("root/cimv2", name); }), kTimedOut);
}

TEST_F(Timeout, OfZeroFailsAtOnceButTheRequestIsWritten) {
    Converse({Replies({AnswerOf(1)}), Replies({AnswerOf(2)})});
    client.setTimeout(0);
    EXPECT_EQ(Enumerate(), kTimedOut);
    server->AwaitHangUp(0);
    EXPECT_EQ(server->requests().size(), 1U);
    client.setTimeout(20000);
    EXPECT_EQ(Enumerate(), "2 objects");
}

}  // namespace
