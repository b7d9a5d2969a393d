#include "cimclient/wire/wire_test.h"

namespace {

using namespace support;

class ReplyHead : public wire::WireTest {
protected:
    /// What an answer with no instances comes to with these headers in place of the usual ones.
    std::string OutcomeOfHeaders(std::vector<std::string> headers) {
        const std::string body = BodyReturning("");
        headers.push_back("Content-Length: " + std::to_string(body.size()));
        return OutcomeOfAnswer(Reply("200 OK", headers, body));
    }
    std::string OutcomeOfType(const std::string& type) {
        return OutcomeOfHeaders({"CIMOperation: MethodResponse", "Content-Type: " + type});
    }
};

constexpr const char* kSuccess = "0 objects";
constexpr const char* kMalformed =
    "CIMClientMalformedHTTPException [Malformed HTTP response message.]";

TEST_F(ReplyHead, NeedsNothingButCimOperation) {
    EXPECT_EQ(OutcomeOfHeaders({"CIMOperation: MethodResponse"}), kSuccess);
    EXPECT_EQ(OutcomeOfHeaders({"cimoperation:methodresponse"}), kSuccess);
    EXPECT_EQ(OutcomeOfHeaders({"Man: http://www.dmtf.org/cim/mapping/http/v1.0; ns=73",
                                "73-CIMOperation: MethodResponse"}),
              kSuccess);
}

TEST_F(ReplyHead, WithoutCimOperationIsRefused) {
    EXPECT_EQ(OutcomeOfHeaders({}),
              "CIMClientMalformedHTTPException [Missing CIMOperation HTTP header]");
    EXPECT_EQ(OutcomeOfHeaders({"CIMOperation: MethodCall"}),
              "CIMClientMalformedHTTPException [Received CIMOperation HTTP header value \"\", "
              "expected \"MethodResponse\"]");
}

TEST_F(ReplyHead, MustNameXmlInUtf8) {
    for (const char* type :
         {"application/xml", "text/xml", "TEXT/XML", "text/xml;charset=utf-8",
          "application/xml; charset=\"utf-8\"", "Application/XML; Charset=UTF-8"}) {
        EXPECT_EQ(OutcomeOfType(type), kSuccess) << type;
    }
    for (const char* type : {"text/html", "application/xml; charset=iso-8859-1", "text/plain"}) {
        EXPECT_EQ(OutcomeOfType(type),
                  std::string("CIMClientMalformedHTTPException [Bad Content-Type HTTP header; ") +
                      type + "]");
    }
}

TEST_F(ReplyHead, ReportsTheFirstOfSeveralFaults) {
    EXPECT_EQ(OutcomeOfAnswer(Reply("403 Forbidden", {"Content-Type: text/html"}, "")),
              "CIMClientHTTPErrorException 403 [HTTP Error (403 Forbidden).]");
    EXPECT_EQ(OutcomeOfHeaders({"Content-Type: text/html", "CIMStatusCode: 5"}),
              "CIMClientMalformedHTTPException [Missing CIMOperation HTTP header]");
    EXPECT_EQ(OutcomeOfHeaders({"CIMOperation: x", "Content-Type: text/html"}),
              "CIMClientMalformedHTTPException [Bad Content-Type HTTP header; text/html]");
    EXPECT_EQ(OutcomeOfHeaders({"CIMOperation: x", "CIMStatusCode: 5"}), "CIMException 5 []");
}

TEST_F(ReplyHead, MayCarryTheCimStatus) {
    const std::string operation = "CIMOperation: MethodResponse";
    EXPECT_EQ(OutcomeOfHeaders(
                  {operation, "CIMStatusCode: 4", "CIMStatusCodeDescription: bad%20%C3%A9%25"}),
              "CIMException 4 [bad é%]");
    for (const char* none : {"CIMStatusCode: 0", "CIMStatusCode: x", "CIMError: x"}) {
        EXPECT_EQ(OutcomeOfHeaders({operation, none}), kSuccess) << none;
    }
}

TEST_F(ReplyHead, ThatIsRefusedLeavesTheNextRequestSound) {
    for (const std::string& refused :
         {Reply("503 Service Unavailable", {"Content-Length: 0"}, ""),
          Reply("200 OK", {"CIMOperation: Other", "Content-Length: 0"}, ""),
          Reply("200 OK",
                {"CIMOperation: MethodResponse", "Content-Type: text/html", "Content-Length: 0"},
                ""),
          Answer("<?xml version=\"1.0\"?><CIM/>")}) {
        client.disconnect();
        Converse({Replies({refused, AnswerOf(1)}), Replies({AnswerOf(1)})});
        EXPECT_THAT(Enumerate(), ::testing::HasSubstr("Exception"));
        EXPECT_EQ(Enumerate(), "1 objects") << refused;
    }
}

TEST_F(ReplyHead, WithAnotherStatusIsAnHttpErrorWhateverItsBody) {
    for (const char* status :
         {"201 Created", "204 No Content", "206 Partial Content", "302 Found", "400 Bad Request",
          "403 Forbidden", "404 Not Found", "405 Method Not Allowed",
          "407 Proxy Authentication Required", "411 Length Required", "413 Too Large",
          "417 Expectation Failed", "500 Internal Server Error", "501 Not Implemented",
          "503 Service Unavailable"}) {
        const std::string code = std::string(status).substr(0, 3);
        const std::string body = std::string(status) == "204 No Content" ? "" : BodyReturning("");
        EXPECT_EQ(OutcomeOfAnswer(Reply(status,
                                        {"CIMOperation: MethodResponse",
                                         "Content-Length: " + std::to_string(body.size())},
                                        body)),
                  "CIMClientHTTPErrorException " + code + " [HTTP Error (" + status + ").]");
    }
}

TEST_F(ReplyHead, TellsTheServersReasonForAnHttpError) {
    EXPECT_EQ(
        OutcomeOfAnswer(Reply("500 Internal Server Error",
                              {"CIMError: request-not-well-formed", "Content-Length: 0"}, "")),
        "CIMClientHTTPErrorException 500 [HTTP Error (500 Internal Server Error): CIMError = "
        "\"request-not-well-formed\".]");
    EXPECT_EQ(OutcomeOfAnswer(Reply("503 Service Unavailable",
                                    {"PGErrorDetail: come%20back", "Content-Length: 0"}, "")),
              "CIMClientHTTPErrorException 503 [HTTP Error (503 Service Unavailable): Detail = "
              "\"come back\".]");
}

TEST_F(ReplyHead, WithAnotherStatusNeedsNoLength) {
    EXPECT_EQ(OutcomeOfAnswer(Reply("503 Service Unavailable", {}, "")),
              "CIMClientHTTPErrorException 503 [HTTP Error (503 Service Unavailable).]");
}

TEST_F(ReplyHead, WithAnotherStatusIsAnHttpErrorWhateverItsFraming) {
    EXPECT_EQ(OutcomeOfAnswer(Reply("500 Internal Server Error", {"Content-Length: x"}, "")),
              "CIMClientHTTPErrorException 500 [HTTP Error (500 Internal Server Error).]");
    EXPECT_EQ(OutcomeOfAnswer(Reply("503 Service Unavailable", {"Transfer-Encoding: gzip"}, "")),
              "CIMClientHTTPErrorException 503 [HTTP Error (503 Service Unavailable).]");
}

TEST_F(ReplyHead, MayComeAfterInterimReplies) {
    const std::string interim = "HTTP/1.1 100 Continue\r\n\r\n";
    EXPECT_EQ(OutcomeOfAnswer(interim + AnswerOf(1)), "1 objects");
    EXPECT_EQ(OutcomeOfAnswer(interim + "HTTP/1.1 102 Processing\r\nX: y\r\n\r\n" + AnswerOf(1)),
              "1 objects");
}

TEST_F(ReplyHead, MayHaveBareLineFeedsOddLinesAndLongOnes) {
    const std::string body = BodyReturning("");
    EXPECT_EQ(OutcomeOfAnswer("HTTP/1.1 200 OK\nCIMOperation: MethodResponse\nContent-Length: " +
                              std::to_string(body.size()) + "\n\n" + body),
              kSuccess);
    EXPECT_EQ(OutcomeOfHeaders({"CIMOperation: MethodResponse", "no colon", ": no name",
                                "Long: " + std::string(100000, 'x')}),
              kSuccess);
}

TEST_F(ReplyHead, ThatIsNoHttpIsMalformed) {
    for (const char* greeting : {"SSH-2.0-OpenSSH_9.2\r\n", "<html>\r\n", "HTTP/1.1 200\r\n\r\n",
                                 "HTTP/1.1 2x0 OK\r\n\r\n", "HTTP/1.1  200 OK\r\n\r\n", "\r\n\r\n",
                                 "HTTP/1.1 200 O", "H"}) {
        EXPECT_EQ(OutcomeOfLastWords(greeting), kMalformed) << greeting;
    }
}

TEST_F(ReplyHead, ThatEndsEarlyCountsAsFarAsItGot) {
    EXPECT_EQ(OutcomeOfLastWords("HTTP/1.1 200 OK\r\nDate: now\r\n"),
              "CIMClientMalformedHTTPException [Missing CIMOperation HTTP header]");
}

TEST_F(ReplyHead, ThatNeverEndsIsGivenUp) {
    const std::string endless(2 * 1024 * 1024, 'x');
    EXPECT_THAT(OutcomeOfAnswer("HTTP/1.1 200 OK\r\nX: " + endless),
                ::testing::StartsWith("CIMClientMalformedHTTPException ["));
    std::string many;
    for (int i = 0; i < 200000; ++i) {
        many += "X: y\r\n\0";
    }
    EXPECT_THAT(OutcomeOfAnswer("HTTP/1.1 200 OK\r\n" + many),
                ::testing::StartsWith("CIMClientMalformedHTTPException ["));
}

}  // namespace
