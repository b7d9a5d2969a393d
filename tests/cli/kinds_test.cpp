// Each way to fail, from the host to the kind that a program reads.
#include <algorithm>
#include <set>
#include <sstream>

#include "cli/command_test.h"
#include "simhost/base64.h"
#include "simhost/host_description.h"

namespace clitest {
namespace {

namespace Faults = simhost::Faults;
using simhost::Fault;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class Kinds : public CommandTest {
protected:
    /// The kinds of a document's failures, each once.
    static std::set<std::string> KindsOf(const Json& document) {
        std::set<std::string> kinds;
        for (const Json& failure : document.at("failures")) {
            kinds.insert(failure.at("kind"));
        }
        return kinds;
    }
    /// The first failure's kind and code.
    static std::pair<std::string, Json> FirstOf(const Json& document) {
        const Json& failure = document.at("failures").at(0);
        return {failure.at("kind"), failure.at("code")};
    }
    Json DocumentOf(std::vector<std::string> arguments, int expected_status = 3) const {
        arguments.insert(arguments.end(), {"--format", "json"});
        const Finished finished = Run(arguments);
        EXPECT_EQ(finished.status, expected_status) << finished.err;
        return Json::parse(finished.out);
    }
    std::size_t EnumerationsAsked() const {
        return static_cast<std::size_t>(std::ranges::count(
            Server().requests(), "EnumerateInstances", &simhost::Request::operation));
    }
};

TEST_F(Kinds, ClosedPortIsUnreachable) {
    const Json document =
        DocumentOf({"inventory", "--host", "127.0.0.1", "--port", std::to_string(ClosedPort())});
    EXPECT_THAT(KindsOf(document), ElementsAre("unreachable"));
    EXPECT_EQ(document.at("failures").at(0).at("section"), nullptr);
    EXPECT_EQ(document.at("sections").size(), 11U);
}

TEST_F(Kinds, UnknownNameIsHostUnknown) {
    EXPECT_THAT(KindsOf(DocumentOf({"inventory", "os", "--host", "no-such-host.invalid"})),
                ElementsAre("host_unknown"));
    EXPECT_THAT(Run({"inventory", "--host", "no-such-host.invalid"}),
                Complains(3, "check the spelling of --host"));
}

TEST_F(Kinds, OtherWordsInPlaceOfTlsAreTlsFailed) {
    Serve(Https());
    Server().InjectFault(Faults::RawOnConnect("SSH-2.0-OpenSSH_9.2p1\r\n"));
    EXPECT_THAT(KindsOf(Document({"os"}, 3)), ElementsAre("tls_failed"));
    EXPECT_THAT(Inventory(), Complains(3, "the TLS handshake failed"));
}

TEST_F(Kinds, RefusedCredentialsAreOfferedOnce) {
    Serve(WithAccount(Https()));
    const Json document =
        Document({"--user", kUser, "--password-file", WriteFile("password", "wrong")}, 3);
    EXPECT_EQ(FirstOf(document), std::pair(std::string("credentials_refused"), Json(401)));
    EXPECT_THAT(KindsOf(document), ElementsAre("credentials_refused"));
    const auto offers =
        std::ranges::count_if(Server().requests(), [](const simhost::Request& request) {
            return request.head.find("Authorization:") != std::string::npos;
        });
    EXPECT_EQ(offers, 1);
    EXPECT_EQ(EnumerationsAsked(), 2U);  // once to be challenged, once with the credentials
}

TEST_F(Kinds, AStallIsTimedOutAndTheRestIsNotAskedAfterTwo) {
    Serve();
    Server().InjectFault(Faults::Stall());
    const Json document = Document({"--request-timeout", "0.2"}, 3);
    EXPECT_THAT(KindsOf(document), ElementsAre("timed_out"));
    EXPECT_EQ(document.at("sections").size(), 11U);
    EXPECT_EQ(EnumerationsAsked(), 2U);
}

TEST_F(Kinds, WhatCameBeforeTheStallIsPrintedAndTheRestIsMarked) {
    Serve();
    Fault stall = Faults::Stall();
    stall.after = 3;  // the computer system's two classes, and the hypervisor's
    Server().InjectFault(stall);
    const Finished finished = Inventory({"--request-timeout", "1"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_THAT(finished.out, HasSubstr("14320388"));
    EXPECT_THAT(finished.out,
                HasSubstr("Installed packages\n==================\nCould not be read: the host did "
                          "not answer in time.\n"));
    EXPECT_THAT(finished.out, HasSubstr("System slots\n============\nNot asked for: the host did "
                                        "not answer in time.\n"));
    EXPECT_EQ(std::ranges::count(finished.err, '\n'), 1);
}

TEST_F(Kinds, TheTimeForTheWholeHostIsADeadline) {
    Serve();
    Server().InjectFault(Faults::Stall());
    const Json document = Document({"--timeout", "0.3"}, 3);
    EXPECT_THAT(KindsOf(document), ElementsAre("deadline"));
    EXPECT_EQ(EnumerationsAsked(), 1U);
}

struct Answer {
    std::string name;
    Fault fault;
    std::string kind;
    Json code;
};

void PrintTo(const Answer& answer, std::ostream* out) { *out << answer.name; }

class AnswerKinds : public Kinds, public testing::WithParamInterface<Answer> {};

TEST_P(AnswerKinds, AreMadeFromStatusAndFraming) {
    Serve();
    Server().InjectFault(GetParam().fault);
    EXPECT_EQ(FirstOf(Document({"os", "--strict"}, 3)),
              std::pair(GetParam().kind, GetParam().code));
}

const Answer kAnswers[] = {
    {"HtmlPage",
     Faults::Raw("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nContent-Length: 6\r\n\r\n<html>"),
     "not_cim_server", nullptr},
    {"NotFound", Faults::HttpStatus(404, "Not Found"), "not_cim_server", 404},
    {"Forbidden", Faults::HttpStatus(403, "Forbidden"), "not_permitted", 403},
    {"Busy", Faults::HttpStatus(503, "Service Unavailable"), "busy", 503},
    {"ServiceFailed", Faults::HttpStatus(500, "Internal Server Error"), "service_failed", 500},
    {"Closed", Faults::Close(), "unreachable", nullptr},
    {"CutOff", Faults::Truncate(700), "bad_reply", nullptr},
    {"CimFailed", Faults::CimErrorElement(1, "x"), "cim_error", 1},
    {"CimAccessDenied", Faults::CimErrorElement(2, "x"), "not_permitted", 2},
    {"CimInvalidNamespace", Faults::CimErrorElement(3, "x"), "unknown_namespace", 3},
    {"CimInvalidClass", Faults::CimErrorElement(5, "x"), "unknown_class", 5},
    {"CimNotFound", Faults::CimErrorElement(6, "x"), "unknown_class", 6},
    {"CimNotSupported", Faults::CimErrorElement(7, "x"), "unknown_class", 7},
    {"CimErrorThatReadsLikeHttp", Faults::CimErrorElement(1, "HTTP Error (401 Unauthorized)"),
     "cim_error", 1},
    {"CimErrorThatReadsLikeAClass", Faults::CimErrorElement(1, "CIM_ERR_INVALID_CLASS: x"),
     "cim_error", 1},
    {"CimErrorThatReadsLikeATimeout", Faults::CimErrorElement(1, "connection timed out"),
     "cim_error", 1},
    {"HugeError", Faults::HugeError(1'000'000), "cim_error", 1},
    {"NestedQuotes", Faults::NestedQuotes(1'000'000), "bad_reply", nullptr},
    {"StatusCodeThatIsNoNumber", Faults::StatusCode("+6"), "bad_reply", nullptr},
    {"CutBeforeTheLastChunk", Faults::CutBeforeLastChunk(), "bad_reply", nullptr},
    {"RefusalInHttp10", Faults::ByName("http10-401"), "credentials_refused", 401},
};

INSTANTIATE_TEST_SUITE_P(, AnswerKinds, testing::ValuesIn(kAnswers),
                         [](const auto& test) { return test.param.name; });

TEST_F(Kinds, AHugeErrorIsShownInPart) {
    Serve();
    Server().InjectFault(Faults::HugeError(1'000'000));
    EXPECT_LT(Inventory({"os"}).err.size(), 5000U);
    EXPECT_LT(Inventory({"os", "--format", "json"}).out.size(), 10'000U);
}

TEST_F(Kinds, AnEchoOfTheCredentialsIsNotShown) {
    Serve(WithAccount(Https()));
    Server().InjectFault(Faults::EchoAuthorization());
    const Finished finished = Inventory(
        {"--user", kUser, "--password-file", WriteFile("password", kPassword), "--log-level", "4"});
    EXPECT_THAT(finished.err, HasSubstr("you said: Basic **********"));
    EXPECT_THAT(finished.out + finished.err,
                Not(HasSubstr(simhost::Base64(std::string(kUser) + ":" + kPassword))));
}

TEST_F(Kinds, WideCellsWidenNoTable) {
    Serve();
    Server().InjectFault(Faults::WideCells(10'000));
    const Finished finished = Inventory({"packages", "ports"});
    EXPECT_EQ(finished.status, 0) << finished.err;
    std::istringstream lines(finished.out);
    for (std::string line; std::getline(lines, line);) {
        EXPECT_LT(line.size(), 1000U);
    }
}

TEST_F(Kinds, OfManyErrorsTheFirstAreShown) {
    Serve(Json::parse(simhost::BuiltinHostText()));
    Fault many = Faults::ManyErrors();
    many.only_operation = "Associators";
    Server().InjectFault(many);
    const Finished finished = Inventory({"pci"});
    EXPECT_THAT(finished.err, HasSubstr(" more failures; --format json lists each\n"));
    EXPECT_LE(std::ranges::count(finished.err, '\n'), 22);
}

TEST_F(Kinds, FloodsOfTlsBetweenRequestsChangeNothing) {
    Serve(Https());
    const std::string sound = WithoutSeconds(Inventory({"system", "os"}).out);
    for (const Fault& flood : {Faults::TicketFlood(), Faults::KeyUpdateFlood()}) {
        Server().ClearFaults();
        Server().InjectFault(flood);
        EXPECT_EQ(WithoutSeconds(Inventory({"system", "os"}).out), sound);
    }
}

TEST_F(Kinds, AHostsWordsDoNotStopTheReading) {
    Serve();
    Server().InjectFault(Faults::CimErrorElement(1, "HTTP Error (401 Unauthorized)"));
    const Finished finished = Inventory();
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.err, HasSubstr("the host reported an error (HTTP Error (401"));
    EXPECT_THAT(finished.err, Not(HasSubstr("password")));
    EXPECT_EQ(EnumerationsAsked(), 12U);  // all of all sections
}

}  // namespace
}  // namespace clitest
