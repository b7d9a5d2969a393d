// What a terminal is given to show.
#include "outputs/text/display_text.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using outputs::AppendDisplayText;
using outputs::DisplayColumns;
using outputs::DisplayLines;
using outputs::DisplayText;
using outputs::DisplayWidth;
using testing::ElementsAre;

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

TEST(DisplayText, IsAppendedWithTheColumnsThatItNeeds) {
    std::string shown = "> ";
    EXPECT_EQ(AppendDisplayText(shown, "日本語", 4), 3U);
    EXPECT_EQ(AppendDisplayText(shown, "ab\x1B", 9), 6U);
    EXPECT_EQ(shown, "> 日…ab\\x1B");
}

TEST(DisplayText, ShortenedIsTheWholeWhereverItFitsAndNeverWider) {
    for (const char* text : {"plain words", "größer 日本語 x", "e\u0301e\u0301",
                             "a\x1B[2J\\b\u202E", "日", "caf\xE9"}) {
        const std::size_t whole = DisplayWidth(DisplayText(text));
        for (std::size_t columns = 1; columns <= whole + 2; ++columns) {
            const std::string shown = DisplayText(text, columns);
            EXPECT_EQ(shown == DisplayText(text), columns >= whole) << text << columns;
            EXPECT_LE(DisplayWidth(shown), columns) << text;
            EXPECT_EQ(DisplayColumns(text, columns), std::min(columns, whole)) << text;
        }
    }
}

TEST(DisplayLines, BreakAtBlanks) {
    EXPECT_THAT(DisplayLines("the fan  has failed", 8, 9), ElementsAre("the fan", "has", "failed"));
    EXPECT_THAT(DisplayLines("the fan", 7, 9), ElementsAre("the fan"));
    EXPECT_THAT(DisplayLines("", 7, 9), ElementsAre(""));
}

TEST(DisplayLines, BreakLongWordsAfterPunctuation) {
    EXPECT_THAT(DisplayLines("6.7.0-0.20.14320388", 12, 9), ElementsAre("6.7.0-0.20.", "14320388"));
    EXPECT_THAT(DisplayLines("version 6.7.0-0.20", 14, 9), ElementsAre("version", "6.7.0-0.20"));
}

TEST(DisplayLines, BreakWordsThatDoNotFitBetweenCharacters) {
    EXPECT_THAT(DisplayLines("abcdefgh", 3, 9), ElementsAre("abc", "def", "gh"));
    EXPECT_THAT(DisplayLines("日本語", 5, 9), ElementsAre("日本", "語"));
    EXPECT_THAT(DisplayLines("abc\x1Bx", 6, 9), ElementsAre("abc", "\\x1Bx"));
    EXPECT_THAT(DisplayLines("日\x1B", 1, 9), ElementsAre("…", "…"));
}

TEST(DisplayLines, EndWithAnEllipsisWhenTheyAreTooMany) {
    EXPECT_THAT(DisplayLines("one two three four", 5, 2), ElementsAre("one", "two …"));
    EXPECT_THAT(DisplayLines(std::string(1'000'000, 'h'), 3, 2), ElementsAre("hhh", "hh…"));
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
