#include "common/text/utf8.h"

#include <gtest/gtest.h>

namespace {

using Zentar::AppendUtf8;
using Zentar::FirstInvalidUtf8;
using Zentar::RepairedUtf8;
using Zentar::RepairedUtf8Size;

constexpr std::size_t kNone = std::string_view::npos;

TEST(Utf8, IsFoundInvalidAtItsFirstBadByte) {
    EXPECT_EQ(FirstInvalidUtf8(""), kNone);
    EXPECT_EQ(FirstInvalidUtf8("ASCII in more than one word"), kNone);
    EXPECT_EQ(FirstInvalidUtf8("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"), kNone);
    EXPECT_EQ(FirstInvalidUtf8("ASCII in words, then \xE9 or so"), 21U);
    for (const char* const sequence :
         {"\x80", "\xC0\x80", "\xC3", "\xE0\x80\x80", "\xED\xA0\x80", "\xF0\x80\x80\x80",
          "\xF4\x90\x80\x80", "\xF5", "\xE2\x82"}) {
        EXPECT_EQ(FirstInvalidUtf8(std::string("ab") + sequence), 2U);
    }
}

TEST(Utf8, IsRepairedByteByByte) {
    const std::string repaired = RepairedUtf8("a\xE2\x82z\xC3\xA9\xFF");
    EXPECT_EQ(repaired, "a\uFFFD\uFFFDz\u00E9\uFFFD");
    EXPECT_EQ(RepairedUtf8Size("a\xE2\x82z\xC3\xA9\xFF"), repaired.size());
}

TEST(Utf8, TakesOneToFourBytesACharacter) {
    std::string text;
    for (const char32_t code : {U'a', U'\u00E9', U'\u20AC', U'\U0001F600'}) {
        AppendUtf8(text, code);
    }
    EXPECT_EQ(text, "a\u00E9\u20AC\U0001F600");
}

}  // namespace
