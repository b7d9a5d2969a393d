#include "cimclient/wire/reply_reading.h"

namespace {

using namespace Pegasus;
using namespace wire;
using support::Body;
using support::BodyReturning;
using support::NamedInstance;
using ::testing::StartsWith;

std::string Replaced(std::string text, const std::string& what, const std::string& by) {
    return text.replace(text.find(what), what.size(), by);
}

/// What a sound answer comes to when a piece of it is replaced.
std::string OutcomeWith(const std::string& what, const std::string& by) {
    return OutcomeOfBody(Replaced(BodyReturning(""), what, by));
}

std::string Invalid(int line, const std::string& what) {
    return "CIMClientXmlException [Validation error: on line " + std::to_string(line) + ": " +
           what + "]";
}

TEST(Envelope, MayReturnNothingInManyWays) {
    for (const char* content : {"<IRETURNVALUE></IRETURNVALUE>", "<IRETURNVALUE/>",
                                "<IRETURNVALUE> \n </IRETURNVALUE>", "", "<!-- nothing -->"}) {
        EXPECT_EQ(OutcomeOfContent(content), "0 objects") << content;
    }
    EXPECT_EQ(OutcomeOfBody("<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n"
                            "<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"><MESSAGE ID=\"1000\" "
                            "PROTOCOLVERSION=\"1.0\"><SIMPLERSP><IMETHODRESPONSE "
                            "NAME=\"EnumerateInstances\"/></SIMPLERSP></MESSAGE></CIM>"),
              "0 objects");
}

TEST(Envelope, MustAnswerThisMessage) {
    for (const char* id : {"77", "abc", "", "1000x", "01000"}) {
        EXPECT_EQ(OutcomeWith("@ID@", id),
                  std::string("CIMClientResponseException [Mismatched response message ID:  Got "
                              "\"") +
                      id + "\", expected \"1000\".]");
    }
    EXPECT_EQ(OutcomeWith(" ID=\"@ID@\"", ""),
              Invalid(3, "Invalid or missing MESSAGE.ID attribute"));
}

TEST(Envelope, MustSpeakProtocol1) {
    EXPECT_EQ(OutcomeWith("PROTOCOLVERSION=\"1.0\"", "PROTOCOLVERSION=\"1.37\""), "0 objects");
    for (const char* version : {"2.0", "1", "1.", "1.x", "10", ""}) {
        EXPECT_EQ(OutcomeWith("PROTOCOLVERSION=\"1.0\"",
                              std::string("PROTOCOLVERSION=\"") + version + "\""),
                  std::string("CIMClientResponseException [Received unsupported protocol version "
                              "\"") +
                      version + "\", expected \"1.[0-9]+\"]");
    }
    EXPECT_EQ(OutcomeWith(" PROTOCOLVERSION=\"1.0\"", ""),
              Invalid(3, "Invalid or missing MESSAGE.PROTOCOLVERSION attribute"));
}

TEST(Envelope, NeedsVersionsButAnyWillDo) {
    EXPECT_EQ(OutcomeWith("CIMVERSION=\"2.0\" DTDVERSION=\"2.0\"",
                          "DTDVERSION=\"2.3\" CIMVERSION=\"3.0\""),
              "0 objects");
    EXPECT_EQ(OutcomeWith("CIMVERSION=\"2.0\"", ""),
              Invalid(2, "missing CIM.CIMVERSION attribute"));
    EXPECT_EQ(OutcomeWith("DTDVERSION=\"2.0\"", ""),
              Invalid(2, "missing CIM.DTDVERSION attribute"));
}

TEST(Envelope, OfAnotherOperationMayOnlyBeEmpty) {
    EXPECT_EQ(OutcomeOfBody(BodyReturning("", "Associators")), "0 objects");
    EXPECT_EQ(
        OutcomeOfBody(BodyReturning(NamedInstance("1"), "Associators")),
        Invalid(6, "Expected close of IRETURNVALUE element, got VALUE.NAMEDINSTANCE instead"));
    EXPECT_EQ(OutcomeOfBody(BodyReturning(NamedInstance("1"), "enumerateinstances")), "1 objects");
}

TEST(Envelope, MustHaveItsElementsInPlace) {
    for (const auto& [what, by] :
         {std::pair{"SIMPLERSP", "SIMPLEREQ"}, std::pair{"IMETHODRESPONSE", "METHODRESPONSE"},
          std::pair{"MESSAGE", "message"}, std::pair{"CIM", "XIM"}}) {
        std::string body =
            Replaced(BodyReturning(""), std::string("<") + what, std::string("<") + by);
        body = Replaced(body, std::string("</") + what + ">", std::string("</") + by + ">");
        EXPECT_THAT(OutcomeOfBody(body), StartsWith("CIMClientXmlException [Validation error"))
            << by;
    }
}

TEST(Envelope, HoldsOneResultOnly) {
    const std::string nothing = "<IRETURNVALUE/>";
    const auto unexpected = [](const std::string& element) {
        return Invalid(6, "Expected close of IMETHODRESPONSE element, got " + element + " instead");
    };
    EXPECT_EQ(OutcomeOfContent(nothing + nothing), unexpected("IRETURNVALUE"));
    EXPECT_EQ(OutcomeOfContent(nothing + "<ERROR CODE=\"1\"/>"), unexpected("ERROR"));
    EXPECT_EQ(OutcomeOfContent(nothing + "<PARAMVALUE NAME=\"x\"/>"), unexpected("PARAMVALUE"));
    EXPECT_EQ(OutcomeOfContent("<ERROR CODE=\"1\"/>" + nothing), unexpected("IRETURNVALUE"));
}

TEST(Envelope, IgnoresWhatFollowsIt) {
    EXPECT_EQ(OutcomeOfBody(BodyReturning("") + "<more> & rubbish"), "0 objects");
}

TEST(ErrorElement, IsACimException) {
    EXPECT_EQ(OutcomeOfContent("<ERROR CODE=\"3\" DESCRIPTION=\"no &lt;such&gt; é\"/>"),
              "CIMException 3 [no <such> é]");
    EXPECT_EQ(OutcomeOfContent("<ERROR CODE=\"3\" DESCRIPTION=\"x\"></ERROR>"),
              "CIMException 3 [x]");
    EXPECT_EQ(OutcomeOfContent("<ERROR CODE=\"3\"/>"), "CIMException 3 []");
    EXPECT_EQ(OutcomeOfContent("<ERROR CODE=\"3\" DESCRIPTION=\"\"/>"), "CIMException 3 []");
}

TEST(ErrorElement, MayHaveAnyNumber) {
    for (const char* code : {"18", "29", "99", "-1"}) {
        EXPECT_EQ(OutcomeOfContent(std::string("<ERROR CODE=\"") + code + "\"/>"),
                  std::string("CIMException ") + code + " []");
    }
}

TEST(ErrorElement, WithCodeZeroIsSuccess) {
    EXPECT_EQ(OutcomeOfContent("<ERROR CODE=\"0\" DESCRIPTION=\"fine\"/>"), "0 objects");
}

TEST(ErrorElement, NeedsADecimalCode) {
    for (const char* code :
         {"", " CODE=\"abc\"", " CODE=\"0x3\"", " CODE=\"\"", " CODE=\"99999999999999999999\""}) {
        EXPECT_EQ(OutcomeOfContent(std::string("<ERROR") + code + "/>"),
                  Invalid(6, "missing ERROR.CODE attribute"));
    }
}

TEST(ErrorElement, CollapsesLiteralWhiteSpaceInItsDescription) {
    EXPECT_EQ(OutcomeOfContent("<ERROR CODE=\"1\" DESCRIPTION=\"  a \t\n b&#10;&#32;&#32;c  \"/>"),
              "CIMException 1 [a b\n  c]");
}

TEST(ErrorElement, MayHoldInstances) {
    const std::string instance =
        "<INSTANCE CLASSNAME=\"CIM_Error\"><PROPERTY NAME=\"Message\" TYPE=\"string\">"
        "<VALUE>why</VALUE></PROPERTY></INSTANCE>";
    EXPECT_EQ(
        OutcomeOfContent("<ERROR CODE=\"1\" DESCRIPTION=\"x\">" + instance + instance + "</ERROR>"),
        "CIMException 1 [x]");
    EXPECT_EQ(OutcomeOfContent("<ERROR CODE=\"1\"><INSTANCE/></ERROR>"),
              Invalid(6, "missing INSTANCE.CLASSNAME attribute"));
}

}  // namespace
