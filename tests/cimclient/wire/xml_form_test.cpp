#include "cimclient/wire/reply_reading.h"

namespace {

using namespace wire;
using support::Body;
using support::BodyReturning;
using support::NamedInstance;
using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr const char* kNoDeclaration =
    "CIMClientXmlException [Validation error: on line 1: Expected <?xml ... ?> style declaration]";

/// What an answer comes to whose sixth line holds an instance with this XML in it.
std::string OutcomeInside(const std::string& properties) {
    return OutcomeOfBody(BodyReturning(NamedInstance("1", properties)));
}

std::string Malformed(const std::string& what) { return "CIMClientXmlException [" + what + "]"; }

TEST(XmlForm, BeginsWithADeclaration) {
    const std::string body = BodyReturning("");
    EXPECT_EQ(OutcomeOfBody(" \n" + body), "0 objects");
    EXPECT_EQ(OutcomeOfBody("<?xml?>" + body.substr(body.find('\n'))), "0 objects");
    for (const std::string& other :
         {std::string("<html>"), std::string("plain"), std::string(), body.substr(body.find('\n')),
          "\xEF\xBB\xBF" + body, std::string("<?xml version")}) {
        EXPECT_EQ(OutcomeOfBody(other), kNoDeclaration) << other;
    }
}

TEST(XmlForm, IsReadAsUtf8WhateverIsDeclared) {
    std::string body = BodyReturning(NamedInstance("é"));
    body.replace(body.find("utf-8"), 5, "ISO-8859-15");
    EXPECT_EQ(OutcomeOfBody(body), "1 objects");
}

TEST(XmlForm, HasNoDocumentType) {
    const std::string body = BodyReturning("");
    const std::size_t end = body.find('\n');
    const std::string bomb =
        "<!DOCTYPE CIM [<!ENTITY a \"aaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;\">]>";
    const std::string outcome = OutcomeOfBody(body.substr(0, end) + bomb + body.substr(end));
    EXPECT_THAT(outcome, HasSubstr("Expected open of CIM element"));
}

TEST(XmlForm, MayHaveCommentsAndInstructionsBetweenElements) {
    EXPECT_EQ(OutcomeInside("<!-- a < b & c --><?target data?>"), "1 objects");
    EXPECT_EQ(OutcomeOfContent("<!-- --><IRETURNVALUE><!-- x --></IRETURNVALUE><!-- - -->"),
              "0 objects");
}

TEST(XmlForm, TakesAttributesInEveryLegalForm) {
    EXPECT_EQ(NamesIn("<PROPERTY  TYPE = 'string'\n\tNAME\n=\n\"a\" xml:lang=\"en\" xmlns='x>y' "
                      "OTHER='&#x20AC;\"'  ><VALUE >v</VALUE ></PROPERTY >"),
              "a ");
}

TEST(XmlForm, IsCaseSensitive) {
    EXPECT_EQ(NamesIn("<property NAME=\"a\" TYPE=\"string\"/>"), "");
    EXPECT_EQ(NamesIn("<PROPERTY name=\"a\" TYPE=\"string\"/>"), "");
}

TEST(XmlForm, ThatIsBrokenSaysWhereAndHow) {
    EXPECT_EQ(OutcomeInside("<PROPERTY NAME=\"a\" TYPE=\"string\"></VALUE>"),
              Malformed("Closing element does not match opening element: on line 6"));
    EXPECT_EQ(OutcomeInside("<PROPERTY 1=\"a\"/>"), Malformed("Bad attribute name: on line 6"));
    EXPECT_EQ(OutcomeInside("<PROPERTY NAME/>"), Malformed("Bad attribute name: on line 6"));
    EXPECT_EQ(OutcomeInside("< PROPERTY/>"), Malformed("Bad opening element: on line 6"));
    EXPECT_EQ(OutcomeInside("<PROPERTY NAME=\"a\" TYPE=\"string\"><VALUE>a & b</VALUE></PROPERTY>"),
              Malformed("Malformed reference: on line 6"));
    EXPECT_EQ(OutcomeInside("<PROPERTY NAME=\"a\" TYPE=\"string\"><VALUE>&eacute;</VALUE>"
                            "</PROPERTY>"),
              Malformed("Malformed reference: on line 6"));
    const std::string body = BodyReturning("");
    EXPECT_EQ(OutcomeOfBody(body.substr(0, body.find("</SIMPLERSP>"))),
              Malformed("One or more tags are still open: on line 7"));
}

TEST(XmlForm, CountsBlankLinesWhetherTheyAreKeptOrNot) {
    for (const std::size_t count : {std::size_t{10}, std::size_t{1000000}}) {
        const std::string blank_lines(count, '\n');
        const std::string line = std::to_string(count + 6);
        EXPECT_EQ(OutcomeOfBody(blank_lines + BodyReturning("")), "0 objects");
        EXPECT_EQ(OutcomeOfBody(blank_lines + "<html>"), kNoDeclaration);
        EXPECT_EQ(OutcomeOfContent("<IRETURNVALUE>" + blank_lines + "<A/></IRETURNVALUE>"),
                  Malformed("Validation error: on line " + line +
                            ": Expected close of IRETURNVALUE element, got A instead"));
        EXPECT_EQ(OutcomeInside(blank_lines + "<PROPERTY NAME/>"),
                  Malformed("Bad attribute name: on line " + line));
    }
}

TEST(XmlForm, ThatIsBrokenIsNeverTakenForSound) {
    for (const char* piece :
         {"<PROPERTY NAME=a TYPE=\"string\"/>", "<PROPERTY NAME=\"a\" TYPE=\"string\"",
          "<PROPERTY NAME=\"a", "<![CDATA[ x", "<!-- x", "</INSTANCE", "</>", "<>", "<",
          "<PROPERTY NAME=\"a\" TYPE=\"string\"><VALUE>&#xZZ;</VALUE></PROPERTY>",
          "<PROPERTY NAME=\"a\" TYPE=\"string\"><VALUE>&#;</VALUE></PROPERTY>",
          "<PROPERTY NAME=\"a\" TYPE=\"string\"><VALUE>&#12</VALUE></PROPERTY>",
          "<PROPERTY NAME=\"a&\" TYPE=\"string\"/>"}) {
        EXPECT_THAT(OutcomeInside(piece), StartsWith("CIMClientXmlException [")) << piece;
    }
}

TEST(XmlForm, CutAnywhereIsRefused) {
    const std::string body = BodyReturning(
        NamedInstance("1",
                      "<PROPERTY NAME='a' TYPE=\"string\"><VALUE>&#32;x<![CDATA[y]]></VALUE>"
                      "</PROPERTY><!-- c -->"));
    const std::size_t whole = body.find("</CIM>") + 6;
    for (std::size_t size = 0; size < whole; ++size) {
        const std::string outcome = OutcomeOfBody(body.substr(0, size));
        EXPECT_THAT(outcome, StartsWith("CIMClient")) << size;
    }
    EXPECT_EQ(OutcomeOfBody(body.substr(0, whole)), "1 objects");
}

TEST(XmlForm, NestedTooDeepIsRefused) {
    std::string open;
    std::string close;
    for (int i = 0; i < 100000; ++i) {
        open += "<A>";
        close += "</A>";
    }
    EXPECT_EQ(OutcomeInside(open + close), Malformed("Elements are nested too deep: on line 6"));
    EXPECT_EQ(OutcomeInside("<A><A><A><A><A><A></A></A></A></A></A></A>"), "1 objects");
}

TEST(XmlText, LosesLiteralWhiteSpaceAtItsEndsOnly) {
    EXPECT_EQ(TextOfValue(" \t\r\n x \r\n\n y \n"), "string [x \r\n\n y]");
    EXPECT_EQ(TextOfValue("   \n "), "string []");
    EXPECT_EQ(TextOfValue("&#32;x&#32;"), "string [ x ]");
    EXPECT_EQ(TextOfValue(" &#32; x &#9; "), "string [  x \t]");
    EXPECT_EQ(TextOfValue("a&#13;b"), "string [a\rb]");
}

TEST(XmlText, ResolvesReferences) {
    EXPECT_EQ(TextOfValue("&lt;&gt;&amp;&quot;&apos;"), "string [<>&\"']");
    EXPECT_EQ(TextOfValue("&#65;&#x42;&#x6a;&#x6A;"), "string [ABjj]");
    EXPECT_EQ(TextOfValue("&amp;lt;"), "string [&lt;]");
    EXPECT_EQ(TextOfValue("&#8482;&#x20AC;&#x1F600;"), "string [™€😀]");
    EXPECT_EQ(TextOfValue("&#233;"), "string [é]");
    EXPECT_EQ(TextOfValue("&#xC3;&#xA9;"), "string [é]") << "some servers refer to each UTF-8 byte";
    EXPECT_EQ(TextOfValue("&#xD800;&#x110000;"), "string [\uFFFD\uFFFD]");
}

TEST(XmlText, MayHoldNulAndControlCharacters) {
    const auto text = PropertyOf(
                          "<PROPERTY NAME=\"p\" TYPE=\"string\"><VALUE>a&#0;b\x01\x1f</VALUE>"
                          "</PROPERTY>")
                          .getValue()
                          .toString();
    EXPECT_EQ(text.utf8(), std::string_view("a\0b\x01\x1f", 5));
}

TEST(XmlText, KeepsWhatIsUtf8AndMarksTheRest) {
    EXPECT_EQ(TextOfValue("caf\xE9 x"), "string [caf\uFFFD x]");
    EXPECT_EQ(TextOfValue("\xC3\xA9\xFF"), "string [é\uFFFD]");
}

TEST(XmlText, InCDataIsTakenAsItStands) {
    EXPECT_EQ(TextOfValue(" <![CDATA[ a <b> &amp; ]] ]> ]]> "), "string [ a <b> &amp; ]] ]> ]");
    EXPECT_EQ(TextOfValue("<![CDATA[]]>"), "string []");
}

TEST(XmlText, ThatIsNotOnePieceLosesItsValueOnly) {
    for (const char* text :
         {"a<![CDATA[b]]>", "<![CDATA[a]]><![CDATA[b]]>", "a<!-- c -->b", "a<B/>", "<B/>"}) {
        EXPECT_EQ(TextOfValue(text), "string null") << text;
    }
}

}  // namespace
