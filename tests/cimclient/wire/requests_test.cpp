#include "cimclient/wire/wire_test.h"

namespace {

using namespace Pegasus;
using support::Answer;
using support::AnswerOf;
using support::Body;
using support::RecordedRequest;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr const char* kEnumeration =
    "POST /cimom HTTP/1.1\r\n"
    "HOST: 127.0.0.1:PORT\r\n"
    "Content-Type: application/xml; charset=utf-8\r\n"
    "content-length: 0000000382\r\n"
    "TE: chunked, trailers\r\n"
    "CIMOperation: MethodCall\r\n"
    "CIMMethod: EnumerateInstances\r\n"
    "CIMObject: root%2Fcimv2\r\n"
    "\r\n"
    "<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n"
    "<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\">\n"
    "<MESSAGE ID=\"4711\" PROTOCOLVERSION=\"1.0\">\n"
    "<SIMPLEREQ>\n"
    "<IMETHODCALL NAME=\"EnumerateInstances\">\n"
    "<LOCALNAMESPACEPATH>\n"
    "<NAMESPACE NAME=\"root\"/>\n"
    "<NAMESPACE NAME=\"cimv2\"/>\n"
    "</LOCALNAMESPACEPATH>\n"
    "<IPARAMVALUE NAME=\"ClassName\">\n"
    "<CLASSNAME NAME=\"X\"/>\n"
    "</IPARAMVALUE>\n"
    "</IMETHODCALL>\n"
    "</SIMPLEREQ>\n"
    "</MESSAGE>\n"
    "</CIM>\n";

class Requests : public wire::WireTest {
protected:
    Requests() { ConverseOnce({Answer(Body(""))}); }

    RecordedRequest Sent() { return server->requests().front(); }
    /// The parameters that were sent, between namespace and end.
    std::string Parameters() {
        const std::string body = Sent().body;
        const std::string before = "</LOCALNAMESPACEPATH>\n";
        const std::size_t begin = body.find(before) + before.size();
        return body.substr(begin, body.find("</IMETHODCALL>") - begin);
    }

    std::string Replaced(std::string text, const std::string& what, const std::string& by) {
        return text.replace(text.find(what), what.size(), by);
    }
};

TEST_F(Requests, OfAnEnumerationHaveThisVeryText) {
    client.enumerateInstances("root/cimv2", "X");
    const RecordedRequest sent = Sent();
    std::string expected = Replaced(kEnumeration, "PORT", std::to_string(server->port()));
    expected = Replaced(expected, "4711", sent.MessageId());
    EXPECT_EQ(sent.head + sent.body, expected);
}

TEST_F(Requests, LeaveDefaultsOutAndStateTheRestInOrder) {
    client.enumerateInstances("root/cimv2", "X", false, false, true, true);
    EXPECT_EQ(Parameters(),
              "<IPARAMVALUE NAME=\"ClassName\">\n<CLASSNAME NAME=\"X\"/>\n</IPARAMVALUE>\n"
              "<IPARAMVALUE NAME=\"LocalOnly\">\n<VALUE>FALSE</VALUE>\n</IPARAMVALUE>\n"
              "<IPARAMVALUE NAME=\"DeepInheritance\">\n<VALUE>FALSE</VALUE>\n</IPARAMVALUE>\n"
              "<IPARAMVALUE NAME=\"IncludeQualifiers\">\n<VALUE>TRUE</VALUE>\n</IPARAMVALUE>\n"
              "<IPARAMVALUE NAME=\"IncludeClassOrigin\">\n<VALUE>TRUE</VALUE>\n</IPARAMVALUE>\n");
}

TEST_F(Requests, NameTheClassParameterEvenWithoutAClass) {
    client.enumerateInstances("root/cimv2", CIMName());
    EXPECT_EQ(Parameters(), "<IPARAMVALUE NAME=\"ClassName\">\n</IPARAMVALUE>\n");
}

TEST_F(Requests, OfAssociatorsSendTheSourcePathWithoutHostAndNamespace) {
    client.associators("root/cimv2",
                       CIMObjectPath("//h/root/other:X.s=\"a<b>&'\\\"q\",n=5,b=TRUE,"
                                     "r=\"Y.k=\\\"1\\\"\""),
                       "AC", "RC", "", "", true);
    EXPECT_EQ(Sent().Header("CIMMethod"), "Associators");
    EXPECT_EQ(Sent().Header("CIMObject"), "root%2Fcimv2");
    EXPECT_EQ(Parameters(),
              "<IPARAMVALUE NAME=\"ObjectName\">\n"
              "<INSTANCENAME CLASSNAME=\"X\">\n"
              "<KEYBINDING NAME=\"b\">\n"
              "<KEYVALUE VALUETYPE=\"boolean\">TRUE</KEYVALUE>\n"
              "</KEYBINDING>\n"
              "<KEYBINDING NAME=\"n\">\n"
              "<KEYVALUE VALUETYPE=\"numeric\">5</KEYVALUE>\n"
              "</KEYBINDING>\n"
              "<KEYBINDING NAME=\"r\">\n"
              "<VALUE.REFERENCE>\n"
              "<INSTANCENAME CLASSNAME=\"Y\">\n"
              "<KEYBINDING NAME=\"k\">\n"
              "<KEYVALUE VALUETYPE=\"string\">1</KEYVALUE>\n"
              "</KEYBINDING>\n"
              "</INSTANCENAME>\n"
              "</VALUE.REFERENCE>\n"
              "</KEYBINDING>\n"
              "<KEYBINDING NAME=\"s\">\n"
              "<KEYVALUE VALUETYPE=\"string\">a&lt;b&gt;&amp;&apos;&quot;q</KEYVALUE>\n"
              "</KEYBINDING>\n"
              "</INSTANCENAME>\n"
              "</IPARAMVALUE>\n"
              "<IPARAMVALUE NAME=\"AssocClass\">\n<CLASSNAME NAME=\"AC\"/>\n</IPARAMVALUE>\n"
              "<IPARAMVALUE NAME=\"ResultClass\">\n<CLASSNAME NAME=\"RC\"/>\n</IPARAMVALUE>\n"
              "<IPARAMVALUE NAME=\"IncludeQualifiers\">\n<VALUE>TRUE</VALUE>\n</IPARAMVALUE>\n");
}

TEST_F(Requests, OfAssociatorsStateEveryParameterInOrder) {
    client.associators("root/cimv2", CIMObjectPath("X.k=1"), CIMName(), CIMName(), "Ro", "Rr", true,
                       true);
    EXPECT_THAT(Parameters(),
                HasSubstr("<IPARAMVALUE NAME=\"AssocClass\">\n</IPARAMVALUE>\n"
                          "<IPARAMVALUE NAME=\"ResultClass\">\n</IPARAMVALUE>\n"
                          "<IPARAMVALUE NAME=\"Role\">\n<VALUE>Ro</VALUE>\n</IPARAMVALUE>\n"
                          "<IPARAMVALUE NAME=\"ResultRole\">\n<VALUE>Rr</VALUE>\n</IPARAMVALUE>\n"
                          "<IPARAMVALUE NAME=\"IncludeQualifiers\">\n<VALUE>TRUE</VALUE>\n"
                          "</IPARAMVALUE>\n"
                          "<IPARAMVALUE NAME=\"IncludeClassOrigin\">\n<VALUE>TRUE</VALUE>\n"
                          "</IPARAMVALUE>\n"));
}

TEST_F(Requests, WithoutANamespaceAreNotSent) {
    EXPECT_EQ(support::FailureOf([this] { client.enumerateInstances(CIMNamespaceName(), "X"); }),
              "InvalidNamespaceNameException [invalid CIM namespace name: ]");
    client.enumerateInstances("root/cimv2", "X");
    EXPECT_EQ(server->requests().size(), 1U);
}

TEST_F(Requests, SendLengthInBytesForClassesBeyondAscii) {
    client.enumerateInstances("root/cimv2", "Gerät");
    EXPECT_THAT(Parameters(), HasSubstr("<CLASSNAME NAME=\"Gerät\"/>"));
    EXPECT_EQ(Sent().Header("content-length"), "0000000387");
}

class MessageIds : public wire::WireTest {};

TEST_F(MessageIds, CountUpAcrossAllClients) {
    const std::string answer = AnswerOf(0);
    Converse({support::Replies({answer, answer}), support::Replies({answer})});
    CIMClient other;
    other.connect("127.0.0.1", server->port(), "", "");
    client.enumerateInstances("root/cimv2", "X");
    other.enumerateInstances("root/cimv2", "X");
    client.enumerateInstances("root/cimv2", "X");
    const auto sent = server->requests();
    const unsigned long first = std::stoul(sent.at(0).MessageId());
    EXPECT_GE(first, 1000U);
    EXPECT_EQ(sent.at(1).MessageId(), std::to_string(first + 1));
    EXPECT_EQ(sent.at(2).MessageId(), std::to_string(first + 2));
}

}  // namespace
