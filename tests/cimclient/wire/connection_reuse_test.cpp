#include "cimclient/wire/wire_test.h"

namespace {

using namespace support;
using ::testing::ElementsAre;

constexpr const char* kClosed =
    "CIMClientMalformedHTTPException [Connection closed by CIM Server.]";
constexpr const char* kNotConnected = "NotConnectedException [not connected]";

class ConnectionReuse : public wire::WireTest {};

TEST_F(ConnectionReuse, CarriesAllOperationsOnOneConnection) {
    ConverseOnce({AnswerOf(1), AnswerOf(2), AnswerOf(3)});
    EXPECT_EQ(Enumerate(), "1 objects");
    EXPECT_EQ(Enumerate(), "2 objects");
    EXPECT_EQ(Enumerate(), "3 objects");
    EXPECT_EQ(server->connections(), 1U);
}

TEST_F(ConnectionReuse, KeepsAConnectionOfHttp10OnlyWhenTheServerSaysSo) {
    const auto old = [](const std::vector<std::string>& headers) {
        return AnswerOf(1, headers).replace(0, 8, "HTTP/1.0");
    };
    Converse({Replies({old({"Connection: Keep-Alive"}), old({})}), Replies({AnswerOf(2)})});
    EXPECT_EQ(Enumerate(), "1 objects");
    EXPECT_EQ(Enumerate(), "1 objects");
    EXPECT_EQ(server->connections(), 1U);
    EXPECT_EQ(Enumerate(), "2 objects");
    EXPECT_EQ(server->connections(), 2U);
}

TEST_F(ConnectionReuse, SurvivesErrorsThatTheServerReports) {
    const std::string error = Answer(Body("<ERROR CODE=\"5\" DESCRIPTION=\"none\"/>"));
    const std::string trailer = ChunkedAnswer(Body(""), {"CIMStatusCode: 6"});
    const std::string status = Reply("500 Internal Server Error", {"Content-Length: 0"}, "");
    const std::string no_xml = Answer("not XML");
    ConverseOnce({error, trailer, status, no_xml, AnswerOf(1)});
    EXPECT_EQ(Enumerate(), "CIMException 5 [none]");
    EXPECT_EQ(Enumerate(), "CIMException 6 []");
    EXPECT_EQ(Enumerate(),
              "CIMClientHTTPErrorException 500 [HTTP Error (500 Internal Server Error).]");
    EXPECT_EQ(Enumerate(),
              "CIMClientXmlException [Validation error: on line 1: Expected <?xml ... ?> style "
              "declaration]");
    EXPECT_EQ(Enumerate(), "1 objects");
    EXPECT_EQ(server->connections(), 1U);
}

TEST_F(ConnectionReuse, SurvivesRefusedHeaders) {
    ConverseOnce({Answer(Body(""), {"CIMStatusCode: 5"}),
                  Reply("200 OK", {"Content-Length: 4"}, "body"), AnswerOf(1)});
    EXPECT_EQ(Enumerate(), "CIMException 5 []");
    EXPECT_EQ(Enumerate(), "CIMClientMalformedHTTPException [Missing CIMOperation HTTP header]");
    EXPECT_EQ(Enumerate(), "1 objects");
    EXPECT_EQ(server->connections(), 1U);
}

TEST_F(ConnectionReuse, ReconnectsAfterAnAnnouncedClose) {
    Converse({Replies({AnswerOf(1, {"CONNECTION: Close"})}), Replies({AnswerOf(2)})});
    EXPECT_EQ(Enumerate(), "1 objects");
    server->AwaitHangUp(0);  // the client closes at once, not with its next operation
    EXPECT_EQ(Enumerate(), "2 objects");
}

TEST_F(ConnectionReuse, ReconnectsSilentlyAfterACloseWhileIdle) {
    Converse({Replies({AnswerOf(1)}) + Conversation{Close()}, Replies({AnswerOf(2)})});
    EXPECT_EQ(Enumerate(), "1 objects");
    server->AwaitHangUp(0);
    EXPECT_EQ(Enumerate(), "2 objects");
    EXPECT_THAT(ConnectionsUsed(), ElementsAre(0U, 1U));
}

TEST_F(ConnectionReuse, ReconnectsSilentlyAfterAResetWhileIdle) {
    Converse({Replies({AnswerOf(1)}) + Conversation{Reset()}, Replies({AnswerOf(2)})});
    EXPECT_EQ(Enumerate(), "1 objects");
    server->AwaitHangUp(0);
    EXPECT_EQ(Enumerate(), "2 objects");
}

TEST_F(ConnectionReuse, ReconnectsBeforeAFirstRequestToo) {
    Converse({Conversation{Close()}, Replies({AnswerOf(1)})});
    server->AwaitHangUp(0);
    EXPECT_EQ(Enumerate(), "1 objects");
}

TEST_F(ConnectionReuse, ReconnectsWhenBytesArriveWhileIdle) {
    Converse({Replies({AnswerOf(1)}) +
                  Conversation{AwaitCue(), Send("HTTP/1.1 408 Timeout\r\n\r\n"), AwaitDelivery()},
              Replies({AnswerOf(2)})});
    EXPECT_EQ(Enumerate(), "1 objects");
    server->Cue();
    server->AwaitEndOf(0);
    EXPECT_EQ(Enumerate(), "2 objects");
    EXPECT_THAT(ConnectionsUsed(), ElementsAre(0U, 1U));
}

TEST_F(ConnectionReuse, IgnoresSurplusBytesWithACompleteAnswer) {
    ConverseOnce({AnswerOf(1) + "surplus", AnswerOf(2)});
    EXPECT_EQ(Enumerate(), "1 objects");
    EXPECT_EQ(Enumerate(), "2 objects");
    EXPECT_EQ(server->connections(), 1U);
}

TEST_F(ConnectionReuse, SendsOnceMoreWhenAUsedConnectionEndsWithoutAnyAnswer) {
    for (const Step& end : {Close(), Reset()}) {
        client.disconnect();
        Converse(
            {Replies({AnswerOf(1)}) + Conversation{AwaitRequest(), end}, Replies({AnswerOf(2)})});
        EXPECT_EQ(Enumerate(), "1 objects");
        EXPECT_EQ(Enumerate(), "2 objects");
        const auto sent = server->requests();
        ASSERT_EQ(sent.size(), 3U);
        EXPECT_EQ(sent[1].body, sent[2].body) << "a request sent again keeps its message ID";
        EXPECT_THAT(ConnectionsUsed(), ElementsAre(0U, 0U, 1U));
    }
}

TEST_F(ConnectionReuse, SendsOnceMoreOnlyOnce) {
    Converse({Replies({AnswerOf(1)}) + Conversation{AwaitRequest(), Close()},
              Conversation{AwaitRequest(), Close()}, Replies({AnswerOf(2)})});
    EXPECT_EQ(Enumerate(), "1 objects");
    EXPECT_EQ(Enumerate(), kClosed);
    EXPECT_EQ(server->requests().size(), 3U);
    EXPECT_EQ(Enumerate(), "2 objects") << "the operation after that connects again";
}

TEST_F(ConnectionReuse, DoesNotSendAgainOnAFreshConnection) {
    for (const Step& end : {Close(), Reset()}) {
        client.disconnect();
        Converse({Conversation{AwaitRequest(), end}, Replies({AnswerOf(1)})});
        EXPECT_EQ(Enumerate(), kClosed);
        EXPECT_EQ(server->requests().size(), 1U);
        EXPECT_EQ(Enumerate(), "1 objects");
    }
}

TEST_F(ConnectionReuse, DoesNotSendAgainAfterTheFirstByteOfAnAnswer) {
    Converse({Replies({AnswerOf(1), "H"}) + Conversation{Close()}, Replies({AnswerOf(2)})});
    EXPECT_EQ(Enumerate(), "1 objects");
    EXPECT_EQ(Enumerate(), "CIMClientMalformedHTTPException [Malformed HTTP response message.]");
    EXPECT_EQ(server->requests().size(), 2U);
    EXPECT_EQ(Enumerate(), "2 objects");
}

TEST_F(ConnectionReuse, SendsAgainWhenTheServerBreaksOffInTheMiddleOfALargeRequest) {
    const Pegasus::CIMName name = LongName(8UL << 20);
    Converse({Replies({AnswerOf(1)}) + Conversation{AwaitByte(), Reset()}, Replies({AnswerOf(2)})});
    EXPECT_EQ(Enumerate(), "1 objects");
    EXPECT_EQ(OutcomeOf([&] { return client.enumerateInstances("root/cimv2", name); }),
              "2 objects");
}

TEST_F(ConnectionReuse, TakesAnAnswerThatComesBeforeTheWholeRequestIsTaken) {
    const Pegasus::CIMName name = LongName(8UL << 20);
    Converse({Conversation{AwaitByte(), Send(Reply("413 Too Large", {"Content-Length: 0"}, "")),
                           AwaitRequest()}});
    EXPECT_EQ(OutcomeOf([&] { return client.enumerateInstances("root/cimv2", name); }),
              "CIMClientHTTPErrorException 413 [HTTP Error (413 Too Large).]");
}

TEST_F(ConnectionReuse, FailsToReconnectUntilTheServerIsBack) {
    Converse({Replies({AnswerOf(1, {"Connection: close"})})});
    EXPECT_EQ(Enumerate(), "1 objects");
    const std::string port = std::to_string(server->port());
    server.reset();
    const std::string refused =
        "CannotConnectException [Cannot connect to 127.0.0.1:" + port + ". Connection failed.]";
    EXPECT_EQ(Enumerate(), refused);
    EXPECT_EQ(Enumerate(), refused) << "the object goes on trying";
}

TEST_F(ConnectionReuse, AllowsConnectAfterALostConnection) {
    Converse({Conversation{AwaitRequest(), Close()}, Replies({AnswerOf(1)})});
    EXPECT_EQ(Enumerate(), kClosed);
    EXPECT_EQ(ConnectOutcome(), "nothing thrown");
    EXPECT_EQ(Enumerate(), "1 objects");
}

TEST_F(ConnectionReuse, EndsWithDisconnectAlsoAfterALostConnection) {
    Converse({Conversation{AwaitRequest(), Close()}});
    EXPECT_EQ(Enumerate(), kClosed);
    client.disconnect();
    EXPECT_EQ(Enumerate(), kNotConnected);
}

TEST_F(ConnectionReuse, NeedsAConnectionFirst) {
    EXPECT_EQ(Enumerate(), kNotConnected);
    client.disconnect();
    client.disconnect();
    EXPECT_EQ(Enumerate(), kNotConnected);
}

TEST_F(ConnectionReuse, ClosesOnDisconnect) {
    Converse({Replies({AnswerOf(1)}), Replies({AnswerOf(2)})});
    EXPECT_EQ(Enumerate(), "1 objects");
    client.disconnect();
    server->AwaitHangUp(0);
    EXPECT_EQ(Enumerate(), kNotConnected);
    Connect();
    EXPECT_EQ(Enumerate(), "2 objects");
}

TEST_F(ConnectionReuse, ConnectsOnlyOnce) {
    ConverseOnce({AnswerOf(1)});
    EXPECT_EQ(ConnectOutcome(), "AlreadyConnectedException [already connected]");
    EXPECT_EQ(Enumerate(), "1 objects") << "the existing connection stays usable";
    EXPECT_EQ(server->connections(), 1U);
}

TEST_F(ConnectionReuse, SendsNothingUponConnect) {
    Converse({Conversation{AwaitCue(), Send(AnswerOf(0))}});
    client.disconnect();
    server->Cue();
    server->AwaitHangUp(0);
    EXPECT_TRUE(server->requests().empty());
}

}  // namespace
