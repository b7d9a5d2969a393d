// Which characters of a text from outside are shown as escapes.
#include "common/text/visible_text.h"

#include <gtest/gtest.h>

namespace {

using Zentar::TextUnit;

std::string Visible(std::string_view text) {
    std::string shown;
    while (!text.empty()) {
        const TextUnit unit = Zentar::FirstUnit(text);
        Zentar::AppendVisible(shown, unit);
        text.remove_prefix(unit.bytes.size());
    }
    return shown;
}

TEST(VisibleText, KeepsTextsOfAnyLanguage) {
    for (const char* text :
         {"", "plain ~", "größe €", "日本語", "e\u0301", "\U0001F600", "a\u00A0b", "שלום", "한국어",
          "\u2764\uFE0F", "葛\U000E0100", "\U0010FFFF"}) {
        EXPECT_EQ(Visible(text), text);
    }
}

TEST(VisibleText, EscapesControlsAndSeparators) {
    EXPECT_EQ(Visible("a\nb\r\tc"), R"(a\nb\r\tc)");
    EXPECT_EQ(Visible("\x1B[31m\x7F"), R"(\x1B[31m\x7F)");
    EXPECT_EQ(Visible(std::string("a\0b", 3)), R"(a\x00b)");
    EXPECT_EQ(Visible("\u0080\u009B31m\u009F"), R"(\u{0080}\u{009B}31m\u{009F})");
    EXPECT_EQ(Visible("a\u2028b\u2029"), R"(a\u{2028}b\u{2029})");
}

TEST(VisibleText, EscapesEveryInvisibleCharacter) {
    for (const std::int32_t code :
         {0x00AD, 0x034F, 0x061C, 0x115F,  0x1160,  0x180E,  0x200B,  0x200C,  0x200D,
          0x200E, 0x200F, 0x202A, 0x202B,  0x202C,  0x202D,  0x202E,  0x2060,  0x2061,
          0x2062, 0x2063, 0x2064, 0x2066,  0x2067,  0x2068,  0x2069,  0x3164,  0xFEFF,
          0xFFA0, 0xFFF9, 0xFFFB, 0x1BCA0, 0x1D173, 0xE0000, 0xE0001, 0xE0020, 0xE007F}) {
        EXPECT_TRUE(Zentar::IsHidden(code)) << std::hex << code;
    }
    EXPECT_EQ(Visible("a\u202Etxt.exe\U000E0041\u200D"), R"(a\u{202E}txt.exe\u{E0041}\u{200D})");
}

TEST(VisibleText, KeepsTheNeighboursOfInvisibleCharacters) {
    for (const std::int32_t code :
         {0x20,   0x7E,   0xA0,   0xAC,   0xAE,   0x0350, 0x061B, 0x115E, 0x1161, 0x200A, 0x2010,
          0x2027, 0x202F, 0x205F, 0x2070, 0x3163, 0xFEFE, 0xFFA1, 0xFFFC, 0xFFFD, 0xE0100}) {
        EXPECT_FALSE(Zentar::IsHidden(code)) << std::hex << code;
    }
}

TEST(VisibleText, DoublesBackslashesSoThatNoTextPassesForAnEscape) {
    EXPECT_EQ(Visible(R"(C:\new)"), R"(C:\\new)");
    EXPECT_EQ(Visible(R"(\u{202E})"), R"(\\u{202E})");
    EXPECT_NE(Visible(R"(\x1B)"), Visible("\x1B"));
}

TEST(VisibleText, EscapesBytesThatAreNotUtf8) {
    EXPECT_EQ(Visible("caf\xE9 x"), R"(caf\xE9 x)");
    EXPECT_EQ(Visible("\x9B\xFF"), R"(\x9B\xFF)");
    EXPECT_EQ(Visible("\xC0\xAF"), R"(\xC0\xAF)");                  // overlong
    EXPECT_EQ(Visible("\xE0\x9F\xBF"), R"(\xE0\x9F\xBF)");          // overlong
    EXPECT_EQ(Visible("\xF0\x8F\xBF\xBF"), R"(\xF0\x8F\xBF\xBF)");  // overlong
    EXPECT_EQ(Visible("\xED\xA0\x80"), R"(\xED\xA0\x80)");          // surrogate
    EXPECT_EQ(Visible("\xF4\x90\x80\x80"), R"(\xF4\x90\x80\x80)");  // beyond Unicode
    EXPECT_EQ(Visible("end\xE2\x82"), R"(end\xE2\x82)");            // cut off
    EXPECT_EQ(Visible("\xE2\x82größe"), R"(\xE2\x82größe)");        // cut off within
}

}  // namespace
