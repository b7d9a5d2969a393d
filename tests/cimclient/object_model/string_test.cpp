// Strings and arrays.
#include "Pegasus/Common/String.h"

#include <gmock/gmock.h>

#include "Pegasus/Common/Array.h"
#include "support/client_view.h"

namespace {

using namespace Pegasus;
using support::FailureOf;
using support::TextOf;

constexpr const char* kBeyondEnd = "IndexOutOfBoundsException [index out of bounds]";

TEST(String, CountsUtf16AndGivesUtf8) {
    const String text("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(text.size(), 4U);
    EXPECT_STREQ(text.getCString(), "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(String().size(), 0U);
    EXPECT_STREQ(String().getCString(), "");
}

TEST(String, RefusesWhatIsNotUtf8) {
    EXPECT_EQ(FailureOf([] { String text("\xFF\xFE"); }),
              "Exception [The byte sequence starting at index 0 is not valid UTF-8 encoding:  "
              "0xFF 0xFE]");
    EXPECT_EQ(FailureOf([] { String text("abc\xE9z"); }),
              "Exception [The byte sequence starting at index 3 is not valid UTF-8 encoding: abc "
              "0xE9 0x7A]");
    EXPECT_THROW(String("\xC0\x80"), Exception);
    EXPECT_THAT(FailureOf([] { String text(static_cast<const char*>(nullptr)); }),
                ::testing::EndsWith("[null pointer]"));
}

TEST(String, GuardsItsBounds) {
    String text("abc");
    EXPECT_EQ(text[3], Char16());
    EXPECT_EQ(FailureOf([&] { text[4]; }), kBeyondEnd);
}

TEST(String, MayHoldAZero) {
    const String text = String::FromUtf8({"buf\0x", 5});
    EXPECT_EQ(text.size(), 5U);
    EXPECT_STREQ(text.getCString(), "buf");
}

TEST(String, ChangesThroughAUnitWithoutItsCopies) {
    String text("a\xF0\x9F\x98\x80z");
    const String copy = text;
    text[0] = Char16(0xE4);
    const String changed = text;
    text[0] = Char16('b');
    EXPECT_EQ(text.size(), 4U);
    EXPECT_STREQ(text.getCString(), "b\xF0\x9F\x98\x80z");
    EXPECT_EQ(TextOf(changed), "\xC3\xA4\xF0\x9F\x98\x80z");
    EXPECT_EQ(TextOf(copy), "a\xF0\x9F\x98\x80z");
    text[1] = Char16();
    EXPECT_EQ(text.utf8(), std::string_view("b\0z", 3)) << "half of a pair counts for nothing";
    String nothing;
    EXPECT_EQ(nothing[0], Char16());
}

TEST(Array, GuardsItsBounds) {
    Array<Uint32> numbers;
    EXPECT_EQ(FailureOf([&] { numbers[0]; }), kBeyondEnd);
    numbers.append(1);
    const Array<Uint32> constant = numbers;
    EXPECT_EQ(FailureOf([&] { numbers[1]; }), kBeyondEnd);
    EXPECT_EQ(FailureOf([&] { constant[1]; }), kBeyondEnd);
}

TEST(Array, IsAValue) {
    Array<String> words;
    words.append("a");
    words.append("b");
    const Array<String> copy = words;
    words[0] = "c";
    words.append(words[1]);
    EXPECT_EQ(TextOf(copy[0]), "a");
    EXPECT_EQ(copy.size(), 2U);
    EXPECT_EQ(TextOf(words[2]), "b");
}

TEST(Array, TakesElementsOfItselfHoweverItGrows) {
    Array<String> words;
    words.append("a text that is long enough");
    for (Uint32 i = 0; i < 100; ++i) {
        const Array<String> copy = words;
        words.append(words[i]);
        words.append(copy[0]);
    }
    EXPECT_EQ(TextOf(words[200]), "a text that is long enough");
}

}  // namespace
