// What a terminal is given to show.
#include "outputs/text/display_text.h"

#include <gtest/gtest.h>

namespace {

using outputs::DisplayText;
using outputs::DisplayWidth;

TEST(DisplayText, KeepsOrdinaryTextsOfAnyLanguage) {
    for (const char* text :
         {"", "plain", "größe €", "日本語", "e\u0301", "\U0001F600", "a\u00A0b"}) {
        EXPECT_EQ(DisplayText(text), text);
    }
}

TEST(DisplayText, MakesControlCharactersVisible) {
    EXPECT_EQ(DisplayText("a\nb\r\tc"), "a\\nb\\r\\tc");
    EXPECT_EQ(DisplayText("\x1B[31m"), "\\x1B[31m");
    EXPECT_EQ(DisplayText(std::string("a\0b", 3)), "a\\x00b");
    EXPECT_EQ(DisplayText("\x7F"), "\\x7F");
    EXPECT_EQ(DisplayText("\u009B31m"), "\\u{009B}31m");
}

TEST(DisplayText, MakesSeparatorsAndInvisibleFormatCharactersVisible) {
    EXPECT_EQ(DisplayText("a\u2028b\u2029"), "a\\u{2028}b\\u{2029}");
    EXPECT_EQ(DisplayText("a\u202Etxt.exe"), "a\\u{202E}txt.exe");
    EXPECT_EQ(DisplayText("\uFEFFa\u200B"), "\\u{FEFF}a\\u{200B}");
}

TEST(DisplayText, DoublesBackslashesSoThatNoTextPassesForAnEscape) {
    EXPECT_EQ(DisplayText("\\u{202E}"), "\\\\u{202E}");
}

TEST(DisplayText, IsShortenedToItsColumns) {
    EXPECT_EQ(DisplayText("abcde", 5), "abcde");
    EXPECT_EQ(DisplayText("abcdef", 5), "abcd…");
    EXPECT_EQ(DisplayText("abcdef", 1), "…");
    EXPECT_EQ(DisplayText("", 1), "");
}

TEST(DisplayText, IsShortenedBetweenCharacters) {
    EXPECT_EQ(DisplayText("größer", 4), "grö…");
    EXPECT_EQ(DisplayText("日本語", 6), "日本語");
    EXPECT_EQ(DisplayText("日本語", 5), "日本…");
    EXPECT_EQ(DisplayText("日本語", 4), "日…");
    EXPECT_EQ(DisplayText("cafe\u0301s x", 5), "cafe\u0301…");
    EXPECT_EQ(DisplayText("ab\x1B[2J", 7), "ab\\x1B…");
    EXPECT_EQ(DisplayText("ab\x1B[2J", 6), "ab…");
}

TEST(DisplayText, ShowsBytesThatAreNotUtf8) {
    EXPECT_EQ(DisplayText("caf\xE9 x"), "caf\\xE9 x");
    EXPECT_EQ(DisplayText("\xC0\xAF\xED\xA0\x80"), "\\xC0\\xAF\\xED\\xA0\\x80");
    EXPECT_EQ(DisplayText("end\xE2\x82"), "end\\xE2\\x82");
}

TEST(DisplayWidth, CountsTheColumnsOfATerminal) {
    EXPECT_EQ(DisplayWidth(""), 0U);
    EXPECT_EQ(DisplayWidth("abc"), 3U);
    EXPECT_EQ(DisplayWidth("größe"), 5U);
    EXPECT_EQ(DisplayWidth("日本語"), 6U);
    EXPECT_EQ(DisplayWidth("cafe\u0301"), 4U);
    EXPECT_EQ(DisplayWidth("\u2764\uFE0F"), 1U);
    EXPECT_EQ(DisplayWidth("ﾊﾝｶｸ"), 4U);
}

}  // namespace
