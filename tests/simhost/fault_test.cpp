#include <algorithm>
#include <map>

#include "simhost/host_test.h"

namespace simhost_test {

namespace {

using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

namespace Faults = simhost::Faults;

class InjectedFault : public HostTest {
protected:
    /// All that arrives for one request, with the connection's end noted.
    std::string AllOfAnswer(const simhost::Fault& fault) {
        Server().InjectFault(fault);
        RawClient client = Connect();
        client.Send(EnumerateCards());
        const std::string all = client.ReceiveAll();
        end = client.end();
        return all;
    }
    /// A working host's answer.
    Reply Good() {
        Server().ClearFaults();
        return Ask(EnumerateCards());
    }
    void ServeTls() { Serve(simhost::ServerOptions()); }

    End end = End::kNone;
};

TEST_F(InjectedFault, CloseEndsWithoutAnAnswer) {
    EXPECT_EQ(AllOfAnswer(Faults::Close()), "");
    EXPECT_EQ(end, End::kClosed);
    EXPECT_EQ(Server().counters().requests, 1U);
}

TEST_F(InjectedFault, ResetEndsByAReset) {
    EXPECT_EQ(AllOfAnswer(Faults::Reset()), "");
    EXPECT_EQ(end, End::kReset);
}

TEST_F(InjectedFault, StallTakesTheRequestAndAnswersNothing) {
    Server().InjectFault(Faults::Stall());
    RawClient client = Connect();
    client.Send(EnumerateCards());
    client.FinishSending();
    EXPECT_EQ(client.ReceiveAll(), "");
    EXPECT_EQ(Server().counters().requests, 1U);
}

TEST_F(InjectedFault, RawAnswersWithTheGivenBytes) {
    EXPECT_EQ(AllOfAnswer(Faults::Raw("<html>")), "<html>");
    EXPECT_EQ(end, End::kClosed);
}

TEST_F(InjectedFault, TruncateCutsAtEveryByte) {
    const std::string whole = Good().raw;
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{100},
                                   whole.size() - 1, whole.size(), whole.size() + 1}) {
        Server().ClearFaults();
        EXPECT_EQ(AllOfAnswer(Faults::Truncate(size)), whole.substr(0, size));
        EXPECT_EQ(end, End::kClosed);
    }
}

TEST_F(InjectedFault, TruncateCanEndByAReset) {
    const std::string cut = AllOfAnswer(Faults::Truncate(100, true));
    EXPECT_THAT(Good().raw, StartsWith(cut));
    EXPECT_EQ(end, End::kReset);
}

TEST_F(InjectedFault, SlowDripSendsTheWholeAnswer) {
    const std::string whole = Good().raw;
    EXPECT_EQ(AnswerWith(Faults::SlowDrip(50, std::chrono::milliseconds(1))).raw, whole);
}

TEST_F(InjectedFault, CloseOnConnectNeverSpeaks) {
    for (const bool tls : {false, true}) {
        Serve(tls ? simhost::ServerOptions() : Http());
        Server().InjectFault(Faults::CloseOnConnect());
        EXPECT_EQ(RawClient::WithoutTls(Server()).ReceiveAll(), "");
    }
}

TEST_F(InjectedFault, StallOnConnectTakesTheConnectionAndNothingElse) {
    ServeTls();
    Server().InjectFault(Faults::StallOnConnect());
    RawClient client = RawClient::WithoutTls(Server());
    client.Send("hello");
    EXPECT_EQ(Server().counters().connections, 1U);
    EXPECT_EQ(Server().counters().tls_handshakes, 0U);
    StopServing();
    EXPECT_EQ(client.ReceiveAll(), "");
}

TEST_F(InjectedFault, RawOnConnectGreetsBeforeAnyTls) {
    ServeTls();
    Server().InjectFault(Faults::ByName("ssh-banner"));
    RawClient client = RawClient::WithoutTls(Server());
    EXPECT_EQ(Server().counters().connections, 1U);
    const std::string banner = "SSH-2.0-OpenSSH_8.3\r\n";
    EXPECT_EQ(client.ReceiveBytes(banner.size()), banner);
}

TEST_F(InjectedFault, WrongLengthAnnouncesMoreOrLess) {
    const Reply good = Good();
    for (const int surplus : {100, -100}) {
        Server().ClearFaults();
        Server().InjectFault(Faults::WrongLength(surplus));
        RawClient client = Connect();
        client.Send(EnumerateCards({"Connection: close\r\n", ""}));
        const Reply reply = client.Receive();
        EXPECT_EQ(std::stol(reply.Header("Content-Length")),
                  static_cast<long>(good.body.size()) + surplus);
        EXPECT_EQ(reply.body + client.ReceiveAll(), good.body);
        EXPECT_EQ(reply.complete, surplus < 0);
    }
}

TEST_F(InjectedFault, CimErrorElementIsAnElementEvenForClientsThatTakeTrailers) {
    const Reply reply = AnswerWith(Faults::CimErrorElement(6, "gone <away>"));
    EXPECT_EQ(reply.status, 200);
    EXPECT_FALSE(reply.HasHeader("Transfer-Encoding"));
    EXPECT_FALSE(reply.HasHeader("Trailer"));
    EXPECT_THAT(reply.body, HasSubstr("<ERROR CODE=\"6\" DESCRIPTION=\"gone &lt;away&gt;\">"));
}

TEST_F(InjectedFault, CimErrorTrailerBreaksOffTheXml) {
    const Reply good = Good();
    const Reply reply = AnswerWith(Faults::CimErrorTrailer(1, "provider died"));
    EXPECT_TRUE(reply.complete);
    EXPECT_EQ(reply.body, good.body.substr(0, good.body.size() / 2));
    EXPECT_EQ(reply.trailers, "CIMStatusCode: 1\r\nCIMStatusCodeDescription: provider%20died\r\n");
}

TEST_F(InjectedFault, HttpStatusReplacesTheAnswer) {
    for (const int status : {401, 403, 500, 503}) {
        Server().ClearFaults();
        const Reply reply = AnswerWith(Faults::HttpStatus(status, "For Some Reason"));
        EXPECT_THAT(reply.head,
                    StartsWith("HTTP/1.1 " + std::to_string(status) + " For Some Reason\r\n"));
        EXPECT_FALSE(reply.HasHeader("CIMError"));
        EXPECT_EQ(reply.body, "");
    }
}

TEST_F(InjectedFault, HttpStatusCanComeWithACimError) {
    const Reply reply = AnswerWith(Faults::HttpStatus(400, "Bad Request", "request-not-valid"));
    EXPECT_EQ(reply.Header("CIMError"), "request-not-valid");
}

TEST_F(InjectedFault, ContentTypeIsReplacedOrLeftOut) {
    EXPECT_EQ(AnswerWith(Faults::ContentType("text/html")).Header("Content-Type"), "text/html");
    Server().ClearFaults();
    EXPECT_FALSE(AnswerWith(Faults::ContentType("")).HasHeader("Content-Type"));
}

TEST_F(InjectedFault, OperationHeaderIsReplacedOrLeftOut) {
    EXPECT_EQ(AnswerWith(Faults::OperationHeader("MethodCall")).Header("CIMOperation"),
              "MethodCall");
    Server().ClearFaults();
    EXPECT_FALSE(AnswerWith(Faults::OperationHeader("")).HasHeader("CIMOperation"));
}

TEST_F(InjectedFault, MessageIdIsAnothers) {
    EXPECT_THAT(AnswerWith(Faults::MessageId("77")).body,
                AllOf(HasSubstr("<MESSAGE ID=\"77\" "), Not(HasSubstr("ID=\"1000\""))));
}

TEST_F(InjectedFault, HugeReplyIsWellFormedToItsEnd) {
    for (const char* class_name : {"Card", "Empty"}) {
        Server().ClearFaults();
        Server().InjectFault(Faults::HugeReply(3'000'000));
        const Reply reply = Ask(Enumerate("root/cimv2", class_name));
        EXPECT_TRUE(reply.complete);
        EXPECT_GE(reply.body.size(), 3'000'000U);
        EXPECT_LT(reply.body.size(), 3'500'000U);
        EXPECT_THAT(reply.body.substr(reply.body.size() - 100), HasSubstr("</SIMPLERSP>"));
    }
}

TEST_F(InjectedFault, HugeReplyCanHaveALength) {
    Server().InjectFault(Faults::HugeReply(1'000'000));
    const Reply reply = Ask(EnumerateCards({"", ""}));
    EXPECT_TRUE(reply.complete);
    EXPECT_THAT(reply.body, EndsWith("</CIM>\n"));
}

TEST_F(InjectedFault, CloseEveryEndsEachConnectionAfterSoManyRequests) {
    Server().InjectFault(Faults::CloseEvery(3));
    for (int connection = 0; connection < 2; ++connection) {
        RawClient client = Connect();
        EXPECT_FALSE(client.Ask(EnumerateCards()).HasHeader("Connection"));
        EXPECT_FALSE(client.Ask(EnumerateCards()).HasHeader("Connection"));
        EXPECT_EQ(client.Ask(EnumerateCards()).Header("Connection"), "close");
        EXPECT_EQ(client.ReceiveAll(), "");
    }
}

TEST_F(InjectedFault, CloseEveryCanBeSilent) {
    Server().InjectFault(Faults::CloseEvery(1, false));
    RawClient client = Connect();
    const Reply reply = client.Ask(EnumerateCards());
    EXPECT_TRUE(reply.complete);
    EXPECT_FALSE(reply.HasHeader("Connection"));
    EXPECT_EQ(client.ReceiveAll(), "");
}

TEST_F(InjectedFault, HugeErrorIsWellFormed) {
    const Reply reply = AnswerWith(Faults::HugeError(3'000'000));
    EXPECT_TRUE(reply.complete);
    EXPECT_GE(reply.body.size(), 3'000'000U);
    EXPECT_LT(reply.body.size(), 3'500'000U);
    EXPECT_THAT(reply.body, HasSubstr("<ERROR CODE=\"1\" DESCRIPTION=\"provider died, "));
    EXPECT_THAT(reply.body, EndsWith("</CIM>\n"));
}

TEST_F(InjectedFault, NestedQuotesStandInTheFirstInstanceAsTheyAre) {
    const Reply good = Good();
    const Reply reply = AnswerWith(Faults::NestedQuotes(5000));
    EXPECT_THAT(reply.body, HasSubstr(std::string(5000, '"')));
    EXPECT_THAT(reply.body, HasSubstr("EmbeddedObject=\"instance\"><VALUE>&lt;INSTANCE"));
    EXPECT_LT(reply.body.size(), good.body.size() + 5000 + 50'000);
}

TEST_F(InjectedFault, EchoAuthorizationRepeatsTheField) {
    Server().InjectFault(Faults::EchoAuthorization());
    std::string request = EnumerateCards();
    request.insert(request.find("\r\n") + 2, "Authorization: Basic cm9vdDp4\r\n");
    EXPECT_THAT(Ask(request).body, HasSubstr("you said: Basic cm9vdDp4"));
}

TEST_F(InjectedFault, WideCellsLengthenTextsAlone) {
    const Reply good = Good();
    const Reply reply = AnswerWith(Faults::WideCells(1000));
    EXPECT_THAT(reply.body, HasSubstr(std::string(1000, 'w') + "</VALUE>"));
    EXPECT_GE(reply.body.size(), good.body.size() + 1000);
    EXPECT_THAT(reply.body, Not(HasSubstr("ww</KEYVALUE>")));
}

TEST_F(InjectedFault, ManyErrorsDifferFromEachOther) {
    Server().InjectFault(Faults::ManyErrors());
    RawClient client = Connect();
    EXPECT_THAT(client.Ask(EnumerateCards()).body, HasSubstr("\"failure 1 of connection 1\""));
    EXPECT_THAT(client.Ask(EnumerateCards()).body, HasSubstr("\"failure 2 of connection 1\""));
    EXPECT_THAT(Ask(EnumerateCards()).body, HasSubstr("\"failure 1 of connection 2\""));
}

TEST_F(InjectedFault, StatusCodeIsWrittenAsGiven) {
    EXPECT_THAT(AnswerWith(Faults::StatusCode("+6")).trailers, StartsWith("CIMStatusCode: +6\r\n"));
}

TEST_F(InjectedFault, CutBeforeLastChunkSendsAllElse) {
    const std::string whole = Good().raw;
    const std::string cut = AllOfAnswer(Faults::CutBeforeLastChunk());
    EXPECT_EQ(cut, whole.substr(0, whole.rfind("\r\n0\r\n")));
    EXPECT_EQ(end, End::kClosed);
}

/// OpenSSL's client reads over them.
TEST_F(InjectedFault, FloodsComeAfterTheAnswer) {
    for (const auto& flood : {Faults::TicketFlood(), Faults::KeyUpdateFlood()}) {
        ServeTls();
        const std::string whole = Good().raw;
        Server().InjectFault(flood);
        RawClient client = Connect();
        client.Send(EnumerateCards() + EnumerateCards());
        EXPECT_EQ(client.ReceiveBytes(whole.size()), whole);
        StopServing();
        EXPECT_EQ(client.ReceiveAll(), "") << "the second request is not answered";
    }
}

TEST_F(InjectedFault, CanBeLimitedToTheNextRequests) {
    simhost::Fault fault = Faults::HttpStatus(500, "Internal Server Error");
    fault.after = 1;
    fault.times = 2;
    Server().InjectFault(fault);
    std::vector<int> statuses;
    for (int i = 0; i < 5; ++i) {
        statuses.push_back(Ask(EnumerateCards()).status);
    }
    EXPECT_THAT(statuses, ::testing::ElementsAre(200, 500, 500, 200, 200));
}

TEST_F(InjectedFault, CanBeLimitedToConnections) {
    simhost::Fault fault = Faults::CloseOnConnect();
    fault.times = 1;
    Server().InjectFault(fault);
    EXPECT_EQ(RawClient::WithoutTls(Server()).ReceiveAll(), "");
    EXPECT_EQ(Ask(EnumerateCards()).status, 200);
}

TEST_F(InjectedFault, CanBeLimitedToOneOperationOrClass) {
    simhost::Fault fault = Faults::HttpStatus(500, "Internal Server Error");
    fault.only_operation = "associators";
    Server().InjectFault(fault);
    EXPECT_EQ(Ask(EnumerateCards()).status, 200);
    EXPECT_EQ(Ask(AssociateFirstCard()).status, 500);
    Server().ClearFaults();
    fault.only_operation = "";
    fault.only_class = "slot";
    Server().InjectFault(fault);
    EXPECT_EQ(Ask(AssociateFirstCard()).status, 200);
    EXPECT_EQ(Ask(Enumerate("root/cimv2", "Slot")).status, 500);
}

TEST_F(InjectedFault, TheFirstThatFitsApplies) {
    simhost::Fault once = Faults::HttpStatus(500, "Internal Server Error");
    once.times = 1;
    Server().InjectFault(once);
    Server().InjectFault(Faults::HttpStatus(503, "Service Unavailable"));
    EXPECT_EQ(Ask(EnumerateCards()).status, 500);
    EXPECT_EQ(Ask(EnumerateCards()).status, 503);
    EXPECT_EQ(Ask(EnumerateCards()).status, 503);
}

TEST_F(InjectedFault, WorksOverTlsToo) {
    ServeTls();
    const std::string whole = Good().raw;
    EXPECT_EQ(AllOfAnswer(Faults::Truncate(200)), whole.substr(0, 200));
    Server().ClearFaults();
    EXPECT_EQ(AllOfAnswer(Faults::Close()), "");
    Server().ClearFaults();
    EXPECT_EQ(AllOfAnswer(Faults::Reset()), "");
    EXPECT_EQ(end, End::kReset);
}

/// Those whose effect does not show in one answer, or takes long, as they are tried here.
const std::map<std::string, std::string> kTriedAs = {
    {"close-every", "close-every=1"},       {"close-every-silently", "close-every-silently=1"},
    {"huge-error", "huge-error=100000"},    {"huge-reply", "huge-reply=100000"},
    {"nested-quotes", "nested-quotes=100"}, {"slow-drip", "slow-drip=3600000"},
};

class NamedFault : public InjectedFault, public ::testing::WithParamInterface<std::string> {
protected:
    /// What a client receives that sends two requests at once.
    std::string Conversation() {
        RawClient client = Connect();
        client.Send(EnumerateCards() + EnumerateCards());
        client.FinishSending();
        return client.ReceiveAll();
    }
    /// The same until the server's next pause.
    std::string ConversationUntilAPause() {
        RawClient client = Connect();
        client.Send(EnumerateCards() + EnumerateCards());
        const std::string first = client.ReceiveBytes(1);
        StopServing();
        const std::string rest = client.ReceiveAll();
        EXPECT_EQ(rest, "");
        return first + rest;
    }
};

TEST_P(NamedFault, HasAnEffect) {
    Server();
    const std::string good = Conversation();
    const auto tried = kTriedAs.find(GetParam());
    Serve(Http());
    Server().InjectFault(Faults::ByName(tried == kTriedAs.end() ? GetParam() : tried->second));
    EXPECT_NE(GetParam() == "slow-drip" ? ConversationUntilAPause() : Conversation(), good);
}

std::vector<std::string> AllNames() {
    std::vector<std::string> names;
    for (const Faults::Name& name : Faults::Names()) {
        names.push_back(name.name);
    }
    return names;
}

INSTANTIATE_TEST_SUITE_P(Each, NamedFault, ::testing::ValuesIn(AllNames()), [](const auto& test) {
    std::string name = test.param;
    std::ranges::replace(name, '-', '_');
    return name;
});

}  // namespace

}  // namespace simhost_test
