#include "simhost/host_test.h"

namespace simhost_test {

namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;

class HttpMessages : public HostTest {};

TEST_F(HttpMessages, AnswersAreChunkedWhenTheClientTakesTrailers) {
    const Reply reply = Ask(EnumerateCards());
    EXPECT_EQ(reply.Header("Transfer-Encoding"), "chunked");
    EXPECT_EQ(reply.Header("Trailer"), "CIMStatusCode, CIMStatusCodeDescription, Content-Language");
    EXPECT_EQ(reply.Header("CIMOperation"), "MethodResponse");
    EXPECT_EQ(reply.Header("Content-Type"), "application/xml; charset=utf-8");
    EXPECT_TRUE(reply.complete);
    EXPECT_EQ(reply.trailers, "");
}

TEST_F(HttpMessages, AnswersHaveALengthOtherwise) {
    for (const char* headers : {"", "TE: chunked\r\n"}) {
        const Reply reply = Ask(EnumerateCards({headers, ""}));
        EXPECT_FALSE(reply.HasHeader("Transfer-Encoding"));
        EXPECT_EQ(reply.Header("Content-Length").size(), 10U);
        EXPECT_TRUE(reply.complete);
        EXPECT_THAT(reply.body, EndsWith("</CIM>\n"));
    }
}

TEST_F(HttpMessages, ChunksCanBeSmall) {
    const Reply whole = Ask(EnumerateCards());
    simhost::ServerOptions options = Http();
    options.chunk_size = 100;
    Serve(options);
    const Reply reply = Ask(EnumerateCards());
    EXPECT_EQ(reply.body, whole.body);
    EXPECT_THAT(reply.raw, HasSubstr("\r\n\r\n64\r\n"));
}

TEST_F(HttpMessages, ARequestMayArriveInPieces) {
    RawClient client = Connect();
    for (const char c : EnumerateCards()) {
        client.Send(std::string(1, c));
    }
    EXPECT_EQ(client.Receive().status, 200);
}

TEST_F(HttpMessages, RequestsMayArriveTogether) {
    RawClient client = Connect();
    client.Send(EnumerateCards() + AssociateFirstCard());
    EXPECT_THAT(client.Receive().body, HasSubstr("EnumerateInstances"));
    EXPECT_THAT(client.Receive().body, HasSubstr("Associators"));
}

struct Refused {
    const char* name;
    std::string request;
    int status;
    std::string header, value;
};

std::string CallWithBody(const std::string& body) {
    return Post("CIMOperation: MethodCall\r\n", body);
}

std::string WithMessage(const std::string& attributes, const std::string& content) {
    return CallWithBody("<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"><MESSAGE " + attributes + ">" +
                        content + "</MESSAGE></CIM>");
}

const std::string kSome =
    "<SIMPLEREQ><IMETHODCALL NAME=\"X\"><LOCALNAMESPACEPATH><NAMESPACE "
    "NAME=\"a\"/></LOCALNAMESPACEPATH></IMETHODCALL></SIMPLEREQ>";
const std::string kMessage = "ID=\"1\" PROTOCOLVERSION=\"1.0\"";

const Refused kRefused[] = {
    {"Get", "GET / HTTP/1.1\r\n\r\n", 405, "Allow", "POST"},
    {"OtherMethod", "M-POST /cimom HTTP/1.1\r\n\r\n", 501, "Connection", "close"},
    {"NoHttp", "hello\r\n\r\n", 400, "Connection", "close"},
    {"OtherTarget", "POST /other HTTP/1.1\r\nContent-Length: 0\r\n\r\n", 404, "Connection",
     "close"},
    {"NoLength", "POST /cimom HTTP/1.1\r\n\r\n", 411, "Connection", "close"},
    {"BadLength", "POST /cimom HTTP/1.1\r\nContent-Length: 5x\r\n\r\n", 400, "Connection", "close"},
    {"TooLong", "POST /cimom HTTP/1.1\r\nContent-Length: 99999999\r\n\r\n", 413, "Connection",
     "close"},
    {"BrokenXml", CallWithBody("<CIM"), 400, "CIMError", "request-not-well-formed"},
    {"NoCim", CallWithBody("<html/>"), 400, "CIMError", "request-not-valid"},
    {"NoMessageId", WithMessage("PROTOCOLVERSION=\"1.0\"", kSome), 400, "CIMError",
     "request-not-valid"},
    {"OtherProtocol", WithMessage("ID=\"1\" PROTOCOLVERSION=\"2.0\"", kSome), 400, "CIMError",
     "unsupported-protocol-version"},
    {"SeveralRequests", WithMessage(kMessage, "<MULTIREQ/>"), 501, "CIMError",
     "multiple-requests-unsupported"},
    {"NoCall", WithMessage(kMessage, "<SIMPLEREQ/>"), 400, "CIMError", "request-not-valid"},
    {"NoCimOperation", Post("", "<CIM><MESSAGE " + kMessage + ">" + kSome + "</MESSAGE></CIM>"),
     400, "CIMError", "unsupported-operation"},
    {"OtherMethodHeader",
     Post("CIMOperation: MethodCall\r\nCIMMethod: Y\r\n",
          "<CIM><MESSAGE " + kMessage + ">" + kSome + "</MESSAGE></CIM>"),
     400, "CIMError", "header-mismatch"},
    {"OtherObjectHeader",
     Post("CIMOperation: MethodCall\r\nCIMObject: b\r\n",
          "<CIM><MESSAGE " + kMessage + ">" + kSome + "</MESSAGE></CIM>"),
     400, "CIMError", "header-mismatch"},
};

class BadRequests : public HttpMessages, public ::testing::WithParamInterface<Refused> {};

TEST_P(BadRequests, GetTheStatusThatSaysWhatIsWrong) {
    const Reply reply = Ask(GetParam().request);
    EXPECT_EQ(reply.status, GetParam().status);
    EXPECT_EQ(reply.Header(GetParam().header), GetParam().value);
    EXPECT_EQ(reply.body, "");
}

INSTANTIATE_TEST_SUITE_P(Each, BadRequests, ::testing::ValuesIn(kRefused),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(HttpMessages, AnExtrinsicMethodIsNotSupported) {
    const Reply reply = Ask(WithMessage(
        kMessage,
        "<SIMPLEREQ><METHODCALL NAME=\"Reset\"><LOCALCLASSPATH><LOCALNAMESPACEPATH><NAMESPACE "
        "NAME=\"root\"/><NAMESPACE NAME=\"cimv2\"/></LOCALNAMESPACEPATH><CLASSNAME "
        "NAME=\"Card\"/></LOCALCLASSPATH></METHODCALL></SIMPLEREQ>"));
    EXPECT_THAT(reply.body, HasSubstr("<METHODRESPONSE NAME=\"Reset\">\n<ERROR CODE=\"7\""));
}

}  // namespace

}  // namespace simhost_test
