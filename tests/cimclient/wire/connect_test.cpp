#include "bench/stalling_host.h"
#include "cimclient/wire/wire_test.h"

namespace {

using namespace support;

class Connecting : public wire::WireTest {
protected:
    std::string OutcomeOfHost(const std::string& host, unsigned port) {
        return FailureOf([&] { client.connect(host.c_str(), port, "", ""); });
    }
};

TEST_F(Connecting, ToAClosedPortFailsAtOnce) {
    for (const unsigned port : {1U, 0U, 70000U}) {
        EXPECT_EQ(OutcomeOfHost("127.0.0.1", port),
                  "CannotConnectException [Cannot connect to 127.0.0.1:" + std::to_string(port) +
                      ". Connection failed.]");
    }
    EXPECT_EQ(Enumerate(), "NotConnectedException [not connected]");
}

TEST_F(Connecting, ToASilentPortTakesAsLongAsTheTimeoutAllows) {
    const bench::FullBacklog silent;
    client.setTimeout(wire::kShortTimeout);
    EXPECT_EQ(OutcomeOfHost("127.0.0.1", silent.port()),
              "CannotConnectException [Cannot connect to 127.0.0.1:" +
                  std::to_string(silent.port()) + ". Connection failed.]");
}

TEST_F(Connecting, NeedsAHostThatCanBe) {
    for (const char* host : {"no-such-host.invalid", "a b", "[::1]", "http://127.0.0.1",
                             "127.0.0.1:5988", "256.1.1.1", "127.0.0.1.", "-h", "..."}) {
        EXPECT_EQ(OutcomeOfHost(host, 5988),
                  std::string("InvalidLocatorException [Invalid locator: ") + host + ":5988]");
    }
    const std::string too_long(300, 'h');
    EXPECT_EQ(OutcomeOfHost(too_long, 5988),
              "InvalidLocatorException [Invalid locator: " + too_long + ":5988]");
}

TEST_F(Connecting, ToAnIpv6AddressNeedsNoBrackets) {
    EXPECT_EQ(OutcomeOfHost("::1", 1),
              "CannotConnectException [Cannot connect to ::1:1. Connection failed.]");
}

TEST_F(Connecting, WithoutAHostMeansThisMachine) {
    Serve({Replies({AnswerOf(1)})});
    EXPECT_EQ(OutcomeOfHost("", server->port()), "nothing thrown");
    EXPECT_EQ(Enumerate(), "1 objects");
    EXPECT_EQ(server->requests().front().Header("HOST"),
              "localhost:" + std::to_string(server->port()));
}

TEST_F(Connecting, KeepsTheHostAsItWasGiven) {
    Serve({Replies({AnswerOf(1)})});
    EXPECT_EQ(OutcomeOfHost("LocalHost", server->port()), "nothing thrown");
    EXPECT_EQ(Enumerate(), "1 objects");
    EXPECT_EQ(server->requests().front().Header("HOST"),
              "LocalHost:" + std::to_string(server->port()));
    client.disconnect();
    EXPECT_EQ(OutcomeOfHost("LocalHost", 1),
              "CannotConnectException [Cannot connect to LocalHost:1. Connection failed.]");
}

TEST_F(Connecting, MayBeTriedAgainAfterAFailure) {
    Serve({Replies({AnswerOf(1)})});
    EXPECT_NE(OutcomeOfHost("127.0.0.1", 1), "nothing thrown");
    EXPECT_EQ(Enumerate(), "NotConnectedException [not connected]");
    Connect();
    EXPECT_EQ(Enumerate(), "1 objects");
}

}  // namespace
