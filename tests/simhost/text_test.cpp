#include "simhost/text.h"

#include <gmock/gmock.h>

#include "simhost/base64.h"
#include "simhost/path_text.h"

namespace {

using simhost::ParsePath;
using simhost::XmlText;

TEST(XmlTextTest, WritesMarkupAndQuotesAsEntities) {
    EXPECT_EQ(XmlText("<a b='c'>&\"d\"</a>"),
              "&lt;a b=&apos;c&apos;&gt;&amp;&quot;d&quot;&lt;/a&gt;");
}

TEST(XmlTextTest, WritesControlCharactersAsReferences) {
    EXPECT_EQ(XmlText("a\r\nb\tc\x01\x7F"), "a&#13;&#10;b&#9;c&#1;&#127;");
}

TEST(XmlTextTest, WritesOneBlankAtEachEndAsAReference) {
    EXPECT_EQ(XmlText("  a b "), "&#32; a b&#32;");
    EXPECT_EQ(XmlText(" "), "&#32;");
}

TEST(XmlTextTest, LeavesBytesBeyondAsciiAlone) {
    EXPECT_EQ(XmlText("Nürnberg 東京 \xFF"), "Nürnberg 東京 \xFF");
}

TEST(PercentEncodingTest, KeepsLettersDigitsAndFewMarks) {
    EXPECT_EQ(simhost::PercentEncoded("CIM_ERR: root/cimv2 ä"),
              "CIM_ERR%3A%20root%2Fcimv2%20%C3%A4");
}

TEST(PercentEncodingTest, IsUndone) {
    EXPECT_EQ(simhost::PercentDecoded("root%2Fcimv2%20%C3%A4"), "root/cimv2 ä");
    EXPECT_EQ(simhost::PercentDecoded("100% %zz %4"), "100% %zz %4");
}

TEST(Base64Test, WritesCredentials) {
    EXPECT_EQ(simhost::Base64("root:pässwörd €"), "cm9vdDpww6Rzc3fDtnJkIOKCrA==");
    EXPECT_EQ(simhost::Base64(""), "");
}

TEST(PathTest, SortsKeysAndKeepsTheirKinds) {
    const auto path = ParsePath(R"(Slot.Tag="a \"b\" \\c",Hot=true,Number=-7)");
    ASSERT_TRUE(path);
    EXPECT_EQ(path->Text(), R"(Slot.Hot=true,Number=-7,Tag="a \"b\" \\c")");
}

TEST(PathTest, DenotesTheSameObjectInAnyCaseOfNames) {
    EXPECT_TRUE(ParsePath("Slot.Tag=\"a\"")->Denotes(*ParsePath("SLOT.tag=\"a\"")));
    EXPECT_FALSE(ParsePath("Slot.Tag=\"a\"")->Denotes(*ParsePath("Slot.Tag=\"A\"")));
    EXPECT_FALSE(ParsePath("Slot.Tag=\"a\"")->Denotes(*ParsePath("Slot.Tag=\"a\",B=1")));
}

TEST(PathTest, RefusesWhatIsNoPath) {
    for (const char* text : {"", "Slot", "Slot.", "Slot.Tag", "Slot.Tag=", "Slot.Tag=\"a",
                             "Slot.Tag=\"a\"b", "1.Tag=\"a\"", "Slot.1=\"a\"", "Slot.A=\"a\\"}) {
        EXPECT_FALSE(ParsePath(text)) << text;
    }
}

}  // namespace
