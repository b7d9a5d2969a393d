#include "cimclient/wire/wire_test.h"

namespace {

using namespace support;
using ::testing::ElementsAre;

constexpr const char* kCredentials = "Basic cm9vdDpzZWNyZXQ=";
constexpr const char* kUnauthorized =
    "CIMClientHTTPErrorException 401 [HTTP Error (401 Unauthorized).]";
constexpr const char* kBasic = "WWW-Authenticate: Basic realm=\"cimom\"";

class Authentication : public wire::WireTest {};

TEST_F(Authentication, FollowsAChallengeAndThenGoesWithEveryRequest) {
    ConverseOnce({Challenge(), AnswerOf(1), AnswerOf(2)});
    EXPECT_EQ(Enumerate(), "1 objects");
    EXPECT_EQ(Enumerate(), "2 objects");
    EXPECT_THAT(Authorizations(), ElementsAre("", kCredentials, kCredentials));
    EXPECT_EQ(server->connections(), 1U);
    const auto sent = server->requests();
    EXPECT_EQ(sent[0].body, sent[1].body) << "a request sent again keeps its message ID";
}

TEST_F(Authentication, IsTheLastHeaderLine) {
    ConverseOnce({Challenge(), AnswerOf(0)});
    Enumerate();
    const std::string line =
        std::string("CIMObject: root%2Fcimv2\r\nAuthorization: ") + kCredentials + "\r\n\r\n";
    EXPECT_THAT(server->requests().back().head, ::testing::EndsWith(line));
}

TEST_F(Authentication, AnswersEveryChallengeThatOffersBasic) {
    for (const char* challenge :
         {"WWW-Authenticate: Basic realm=\"x\"", "WWW-Authenticate: Basic realm=x",
          "WWW-Authenticate: Basic", "WWW-Authenticate: basic realm=\"x\"",
          "WWW-Authenticate: BASIC realm=\"x\"", "www-authenticate: Basic \"esx01:5989\"",
          "WWW-Authenticate: Negotiate, Basic realm=\"x\"",
          "WWW-Authenticate: Digest realm=\"a, b\", nonce=\"1\", Basic realm=\"x\"",
          "WWW-Authenticate: Negotiate\r\nWWW-Authenticate: Basic realm=\"x\""}) {
        client.disconnect();
        ConverseOnce({Challenge({challenge}), AnswerOf(1)});
        EXPECT_EQ(Enumerate(), "1 objects") << challenge;
        EXPECT_THAT(Authorizations(), ElementsAre("", kCredentials)) << challenge;
    }
}

TEST_F(Authentication, FailsAtOnceWithoutAnOfferOfBasic) {
    for (const std::vector<std::string>& headers :
         {std::vector<std::string>{},
          {"WWW-Authenticate: Negotiate"},
          {"WWW-Authenticate: Digest realm=\"Basic\", nonce=\"1\""},
          {"WWW-Authenticate: Digest realm=\"x\", basic=\"1\""},
          {"WWW-Authenticate: Digest realm=\"x\", Basic = \"1\""},
          {"WWW-Authenticate: Digest realm=\"x, Basic y\", nonce=\"1\""},
          {"WWW-Authenticate: Basically realm=\"x\""}}) {
        client.disconnect();
        ConverseOnce({Challenge(headers), AnswerOf(1)});
        EXPECT_EQ(Enumerate(), kUnauthorized);
        EXPECT_EQ(server->requests().size(), 1U);
    }
}

TEST_F(Authentication, RefusedASecondTimeFailsAndKeepsTheConnection) {
    ConverseOnce({Challenge(), Challenge(), Challenge(), AnswerOf(1)});
    EXPECT_EQ(Enumerate(), kUnauthorized);
    EXPECT_EQ(Enumerate(), kUnauthorized) << "one 401 suffices once credentials are sent at once";
    EXPECT_EQ(Enumerate(), "1 objects");
    EXPECT_THAT(Authorizations(), ElementsAre("", kCredentials, kCredentials, kCredentials));
    EXPECT_EQ(server->connections(), 1U);
}

TEST_F(Authentication, TellsTheServersReasonForARefusal) {
    ConverseOnce(
        {Challenge(), Challenge({kBasic, "CIMError: some-error", "PGErrorDetail: detail%20text"})});
    EXPECT_EQ(Enumerate(),
              "CIMClientHTTPErrorException 401 [HTTP Error (401 Unauthorized): CIMError = "
              "\"some-error\" Detail = \"detail text\".]");
}

TEST_F(Authentication, GoesOnANewConnectionWhenTheChallengeClosesTheOld) {
    Converse({Replies({Challenge({kBasic, "Connection: close"})}) + Conversation{Close()},
              Replies({AnswerOf(1)})});
    EXPECT_EQ(Enumerate(), "1 objects");
    EXPECT_THAT(Authorizations(), ElementsAre("", kCredentials));
    EXPECT_THAT(ConnectionsUsed(), ElementsAre(0U, 1U));
}

TEST_F(Authentication, GoesOnANewConnectionWhenTheOldIsClosedUnannounced) {
    Converse({Replies({Challenge()}) + Conversation{Close()}, Replies({AnswerOf(1)})});
    EXPECT_EQ(Enumerate(), "1 objects");
    EXPECT_EQ(Authorizations().back(), kCredentials);
}

TEST_F(Authentication, SkipsTheBodyOfAChallenge) {
    const std::string page = "<html>who are you?</html>";
    ConverseOnce({Reply("401 Unauthorized",
                        {kBasic, "Content-Length: " + std::to_string(page.size())}, page),
                  AnswerOf(1)});
    EXPECT_EQ(Enumerate(), "1 objects");
}

TEST_F(Authentication, GoesOnANewConnectionAfterAChallengeOfHttp10) {
    // Its body has no end but the connection's, and comes later than its head.
    const std::string head = "HTTP/1.0 401 Unauthorized\r\n" + std::string(kBasic) + "\r\n\r\n";
    Converse({{AwaitRequest(), Send(head), AwaitDelivery(), Send("<html>Who are you?</html>")},
              Replies({AnswerOf(1)})});
    EXPECT_EQ(Enumerate(), "1 objects");
    EXPECT_THAT(ConnectionsUsed(), ElementsAre(0, 1));
}

TEST_F(Authentication, TakesAChallengeWithoutLengthAsWithoutBody) {
    ConverseOnce({Reply("401 Unauthorized", {kBasic}, ""), AnswerOf(1)});
    EXPECT_EQ(Enumerate(), "1 objects");
}

TEST_F(Authentication, IsRememberedOverEveryKindOfReconnection) {
    Converse({Replies({Challenge(), AnswerOf(1)}) + Conversation{Close()},
              Replies({AnswerOf(2, {"Connection: close"})}) + Conversation{Close()},
              Conversation{AwaitRequest()}, Replies({AnswerOf(3)}) + Conversation{Reset()},
              Replies({AnswerOf(4)})});
    EXPECT_EQ(Enumerate(), "1 objects");
    server->AwaitHangUp(0);
    EXPECT_EQ(Enumerate(), "2 objects");
    client.setTimeout(wire::kShortTimeout);
    EXPECT_EQ(Enumerate(), "ConnectionTimeoutException [connection timed out]");
    client.setTimeout(20000);
    EXPECT_EQ(Enumerate(), "3 objects");
    server->AwaitHangUp(3);
    EXPECT_EQ(Enumerate(), "4 objects");
    EXPECT_THAT(Authorizations(), ElementsAre("", kCredentials, kCredentials, kCredentials,
                                              kCredentials, kCredentials));
}

TEST_F(Authentication, SendsUtf8AndNeverBreaksLines) {
    const std::string long_ticket(300, 't');
    Serve({Replies({Challenge(), AnswerOf(0)}), Replies({Challenge(), AnswerOf(0)}),
           Replies({Challenge(), AnswerOf(0)})});
    const auto connect_as = [this](const char* user, const char* password) {
        client.disconnect();
        client.connect("127.0.0.1", server->port(), user, password);
        EXPECT_EQ(Enumerate(), "0 objects");
        return Authorizations().back();
    };
    EXPECT_EQ(connect_as("usér", "p:a €"), "Basic dXPDqXI6cDphIOKCrA==");
    EXPECT_EQ(connect_as("", ""), "Basic Og==");
    EXPECT_EQ(connect_as(long_ticket.c_str(), long_ticket.c_str()).size(),
              std::string("Basic ").size() + (601 + 2) / 3 * 4);
}

}  // namespace
