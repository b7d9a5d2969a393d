// What a message looks like as a line of the log.
#include <gtest/gtest.h>

#include <regex>

#include "common/log/log_control.h"

namespace {

/// The line of a message with this text, without its time stamp.
std::string LineOf(const std::string& text) {
    const std::string line = Zentar::FormatLogMessage({3, "cimfunc.cpp", 120, text, ""});
    return line.substr(line.find(' ') + 1);
}

/// The text as it stands in the line.
std::string ShownAs(const std::string& text) {
    const std::string prefix = "[3] cimfunc.cpp:120 ";
    const std::string line = LineOf(text);
    EXPECT_EQ(line.substr(0, prefix.size()), prefix);
    EXPECT_EQ(line.back(), '\n');
    return line.substr(prefix.size(), line.size() - prefix.size() - 1);
}

TEST(LogLine, HasTimeLevelPlaceAndText) {
    const std::string line = Zentar::FormatLogMessage({1, "kalvex.cpp", 41, "It failed!", ""});
    const std::regex form(
        R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{6}Z \[1\] kalvex\.cpp:41 It failed!\n)");
    EXPECT_TRUE(std::regex_match(line, form)) << line;
}

TEST(LogLine, KeepsTextsOfAnyLanguageAndTabs) {
    const std::string text = "record_id\t:größe 日本語 \xF0\x9F\x98\x80";
    EXPECT_EQ(ShownAs(text), text);
}

TEST(LogLine, KeepsAnEmptyText) { EXPECT_EQ(ShownAs(""), ""); }

TEST(LogLine, IndentsFurtherLinesSoThatNoTextForgesAMessage) {
    EXPECT_EQ(ShownAs("a\n2026-11-21T05:47:31.123456Z [1] cimfunc.cpp:1 forged"),
              "a\n    2026-11-21T05:47:31.123456Z [1] cimfunc.cpp:1 forged");
}

TEST(LogLine, DropsOneLineBreakAtTheEnd) {
    EXPECT_EQ(ShownAs("a\nb\n"), "a\n    b");
    EXPECT_EQ(ShownAs("a\n\n"), "a\n    ");
}

TEST(LogLine, ShowsControlCharactersInsteadOfSendingThem) {
    EXPECT_EQ(ShownAs("a\x1B[2J"), "a\\x1B[2J");
    EXPECT_EQ(ShownAs("a\rb"), "a\\rb");
    EXPECT_EQ(ShownAs(std::string("a\0b", 3)), "a\\x00b");
    EXPECT_EQ(ShownAs("a\x7F\b"), "a\\x7F\\x08");
}

TEST(LogLine, ShowsC1ControlsSeparatorsAndInvisibleCharacters) {
    EXPECT_EQ(ShownAs("\u009B31m\u0085\u00A0"), "\\u{009B}31m\\u{0085}\u00A0");
    EXPECT_EQ(ShownAs("a\u2028b\u2029"), "a\\u{2028}b\\u{2029}");
    EXPECT_EQ(ShownAs("a\u202Egpj.exe\u200B"), "a\\u{202E}gpj.exe\\u{200B}");
}

TEST(LogLine, DoublesBackslashesSoThatNoTextPassesForAnEscape) {
    EXPECT_EQ(ShownAs("\\u{202E} C:\\n"), "\\\\u{202E} C:\\\\n");
}

TEST(LogLine, ShowsBytesThatAreNotUtf8) {
    EXPECT_EQ(ShownAs("caf\xE9 ok"), "caf\\xE9 ok");
    EXPECT_EQ(ShownAs("\x9B"), "\\x9B");
    EXPECT_EQ(ShownAs("\xC0\xAF"), "\\xC0\\xAF");                    // overlong
    EXPECT_EQ(ShownAs("\xED\xA0\x80"), "\\xED\\xA0\\x80");           // surrogate
    EXPECT_EQ(ShownAs("\xF4\x90\x80\x80"), "\\xF4\\x90\\x80\\x80");  // beyond Unicode
    EXPECT_EQ(ShownAs("end \xE2\x82"), "end \\xE2\\x82");            // cut off
}

TEST(LogLine, NamesItsContextBeforeTheFile) {
    const std::string line =
        Zentar::FormatLogMessage({1, "kalvex.cpp", 41, "It failed!", "esx\x1B:5989"});
    EXPECT_NE(line.find("Z [1] esx\\x1B:5989 kalvex.cpp:41 It failed!\n"), std::string::npos)
        << line;
}

}  // namespace
