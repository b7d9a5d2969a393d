#include "cimclient/wire/wire_test.h"

namespace {

using namespace support;
using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr const char* kOne = "1 objects";
constexpr const char* kNoDeclaration =
    "CIMClientXmlException [Validation error: on line 1: Expected <?xml ... ?> style declaration]";
constexpr const char* kBadLength =
    "CIMClientHTTPErrorException 400 [HTTP Error (400 Bad Request): Detail = \"Invalid "
    "Content-Length header detected\".]";
constexpr const char* kTooLarge =
    "CIMClientMalformedHTTPException [The reply is larger than 67108864 bytes.]";

class Framing : public wire::WireTest {
protected:
    const std::string body = BodyReturning(NamedInstance("1"));

    std::string Announcing(const std::string& length) {
        return AnswerHead({"Content-Length: " + length}) + body;
    }
    std::string Announcing(std::size_t length) { return Announcing(std::to_string(length)); }
    std::string InChunks(std::size_t size, const std::vector<std::string>& trailer = {}) {
        return AnswerHead({"Transfer-Encoding: chunked"}) + Chunked(body, size, trailer);
    }
    std::string OutcomeOfTrailer(const std::vector<std::string>& trailer) {
        return OutcomeOfAnswer(InChunks(body.size(), trailer));
    }
};

TEST_F(Framing, ByLength) { EXPECT_EQ(OutcomeOfAnswer(Announcing(body.size())), kOne); }

TEST_F(Framing, ByTheEndOfTheConnection) {
    EXPECT_EQ(OutcomeOfLastWords(AnswerHead() + body), kOne);
}

TEST_F(Framing, WithTooGreatALengthTakesWhatCameBeforeTheEnd) {
    EXPECT_EQ(OutcomeOfLastWords(Announcing(body.size() + 100)), kOne);
}

TEST_F(Framing, WithTooSmallALengthCutsTheXml) {
    EXPECT_THAT(OutcomeOfAnswer(Announcing(body.size() - 100)),
                StartsWith("CIMClientXmlException"));
    EXPECT_EQ(OutcomeOfAnswer(Announcing("0")), kNoDeclaration);
}

TEST_F(Framing, CutShortByTheServerIsNotWellFormed) {
    const std::string half = Announcing(body.size()).substr(0, AnswerHead().size() + 200);
    EXPECT_THAT(OutcomeOfLastWords(half), StartsWith("CIMClientXmlException ["));
    const std::string all_but_the_end = AnswerHead() + body.substr(0, body.find("</SIMPLERSP>"));
    EXPECT_EQ(OutcomeOfLastWords(all_but_the_end),
              "CIMClientXmlException [One or more tags are still open: on line 7]");
}

TEST_F(Framing, WithALengthThatIsNoneIsRefused) {
    for (const char* length : {"abc", "-1", "+5", "1x", "0x10", "", "1 2", "9223372036854775808",
                               "18446744073709551616", "99999999999999999999999"}) {
        EXPECT_EQ(OutcomeOfAnswer(Announcing(length)), kBadLength) << length;
    }
}

TEST_F(Framing, WithTwoLengthsThatDifferIsRefused) {
    const std::string right = std::to_string(body.size());
    EXPECT_EQ(OutcomeOfAnswer(Announcing(right + "\r\nContent-Length: 5")), kBadLength);
    EXPECT_EQ(OutcomeOfAnswer(Announcing(right + "\r\nContent-Length: " + right)), kOne);
}

TEST_F(Framing, OfAnAnnouncedSizeBeyondTheLimitIsRefusedAtOnce) {
    EXPECT_EQ(OutcomeOfAnswer(Announcing("268435457")), kTooLarge);
    EXPECT_EQ(OutcomeOfAnswer(Announcing("9223372036854775807")), kTooLarge);
    EXPECT_EQ(OutcomeOfAnswer(AnswerHead({"Transfer-Encoding: chunked"}) + "10000001\r\n<?xml"),
              kTooLarge);
    EXPECT_EQ(
        OutcomeOfAnswer(AnswerHead({"Transfer-Encoding: chunked"}) + "fffffffffffffffff\r\n<?xml"),
        kTooLarge);
}

TEST_F(Framing, ByChunksOfAnySize) {
    for (const std::size_t size : {1U, 7U, 100U, 100000U}) {
        EXPECT_EQ(OutcomeOfAnswer(InChunks(size)), kOne) << size;
    }
}

TEST_F(Framing, ByChunksMayHaveExtensionsAndAnIdleLength) {
    const std::string rest = body.substr(3);
    const std::string chunks =
        "3;name=value\r\n" + body.substr(0, 3) + "\r\n" + Chunked(rest, rest.size());
    EXPECT_EQ(OutcomeOfAnswer(AnswerHead({"Transfer-Encoding: chunked"}) + chunks), kOne);
    EXPECT_EQ(
        OutcomeOfAnswer(AnswerHead({"Content-Length: 5", "Transfer-Encoding: chunked"}) + chunks),
        kOne);
}

TEST_F(Framing, ByChunksLeavesTheConnectionInOrder) {
    ConverseOnce({InChunks(50, {"X: y"}), InChunks(1), AnswerOf(2)});
    EXPECT_EQ(Enumerate(), kOne);
    EXPECT_EQ(Enumerate(), kOne);
    EXPECT_EQ(Enumerate(), "2 objects");
    EXPECT_EQ(server->connections(), 1U);
}

TEST_F(Framing, ByChunksMustNotLackTheLastOne) {
    for (const std::string& whole : {body, BodyReturning("")}) {
        const std::string chunks = Chunked(whole, whole.size());
        for (const std::size_t cut : {5U, 2U}) {  // all of the last chunk, the end of the trailers
            EXPECT_EQ(OutcomeOfLastWords(AnswerHead({"Transfer-Encoding: chunked"}) +
                                         chunks.substr(0, chunks.size() - cut)),
                      "CIMClientMalformedHTTPException [Connection closed by CIM Server.]")
                << "an error might have stood in the trailers";
        }
    }
}

TEST_F(Framing, CutInsideAChunkIsNotWellFormed) {
    const std::string answer = InChunks(body.size());
    EXPECT_THAT(OutcomeOfLastWords(answer.substr(0, answer.size() - 100)),
                StartsWith("CIMClientXmlException ["));
}

TEST_F(Framing, ByChunksWithoutASizeIsRefused) {
    for (const char* size : {"ZZ", "5Z", "", "-5", "0x5", "5 5"}) {
        EXPECT_EQ(OutcomeOfAnswer(AnswerHead({"Transfer-Encoding: chunked"}) + size + "\r\n"),
                  "CIMClientHTTPErrorException 400 [HTTP Error (400 Bad Request): Detail = "
                  "\"missing chunk extension\".]")
            << size;
    }
}

TEST_F(Framing, OfAnotherKindIsRefused) {
    for (const char* encoding : {"gzip", "chunkedd", "gzip, chunked"}) {
        EXPECT_EQ(OutcomeOfAnswer(AnswerHead({std::string("Transfer-Encoding: ") + encoding})),
                  "CIMClientHTTPErrorException 501 [HTTP Error (501 Not Implemented): Detail = "
                  "\"unimplemented transfer-encoding value\".]")
            << encoding;
    }
}

TEST_F(Framing, ByChunksIsNamedInAnyCase) {
    EXPECT_EQ(OutcomeOfAnswer(AnswerHead({"Transfer-Encoding: Chunked"}) + Chunked(body, 100)),
              kOne);
}

TEST_F(Framing, HidesNoErrorInATrailerThatCannotBeRead) {
    for (const char* code : {"+6", "six", "6.0", "99999999999"}) {
        EXPECT_EQ(OutcomeOfTrailer({std::string("CIMStatusCode: ") + code}),
                  std::string("CIMClientMalformedHTTPException [Bad CIMStatusCode HTTP trailer; ") +
                      code + "]");
    }
}

TEST_F(Framing, MayCarryTheCimStatusInItsTrailer) {
    EXPECT_EQ(OutcomeOfTrailer({"CIMStatusCode: 6", "CIMStatusCodeDescription: a%20b"}),
              "CIMException 6 [a b]");
    EXPECT_EQ(OutcomeOfTrailer({"CIMStatusCode: 0"}), kOne);
    EXPECT_EQ(OutcomeOfTrailer({"CIMError: request-not-valid", "PGErrorDetail: x"}),
              "CIMClientHTTPErrorException 400 [HTTP Error (400 Bad Request): CIMError = "
              "\"request-not-valid\".]");
}

TEST_F(Framing, LetsTheTrailersStatusCountWhateverTheBodyWas) {
    const std::vector<std::string> trailer = {"CIMStatusCode: 1",
                                              "CIMStatusCodeDescription: provider died"};
    const std::string half = body.substr(0, 300);
    EXPECT_EQ(OutcomeOfAnswer(ChunkedAnswer(half, trailer)), "CIMException 1 [provider died]");
    EXPECT_EQ(OutcomeOfAnswer(AnswerHead({"Transfer-Encoding: chunked"}) + Chunked("", 1, trailer)),
              "CIMException 1 [provider died]");
}

TEST_F(Framing, MayArriveByteByByte) {
    const std::string answer = InChunks(20, {"CIMStatusCode: 0"});
    Conversation conversation = {AwaitRequest()};
    std::string last;
    for (const char byte : answer) {
        conversation.push_back(Send(std::string(1, byte)));
    }
    // The message ID must not be torn apart, as it is put in when a step is sent.
    const std::string id = "@ID@";
    const std::size_t at = answer.find(id);
    conversation.erase(conversation.begin() + 1 + static_cast<long>(at),
                       conversation.begin() + 1 + static_cast<long>(at + id.size()));
    conversation.insert(conversation.begin() + 1 + static_cast<long>(at), Send(id));
    Converse({conversation});
    EXPECT_EQ(Enumerate(), kOne);
}

TEST_F(Framing, OfALargeReplyIsReadWhole) {
    std::string instances;
    for (int i = 0; i < 20000; ++i) {
        instances += NamedInstance(std::to_string(i));
    }
    EXPECT_EQ(OutcomeOfAnswer(ChunkedAnswer(BodyReturning(instances))), "20000 objects");
}

}  // namespace
