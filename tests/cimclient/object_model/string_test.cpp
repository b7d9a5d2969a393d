// Strings and arrays.
#include "Pegasus/Common/String.h"

#include <gmock/gmock.h>

#include <sstream>

#include "Pegasus/Common/Array.h"
#include "support/client_view.h"

namespace {

using namespace Pegasus;
using support::FailureOf;
using support::TextOf;

constexpr const char* kOutOfBounds = "IndexOutOfBoundsException [index out of bounds]";

TEST(String, CountsUtf16AndGivesUtf8) {
    const String text("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(text.size(), 4U);
    EXPECT_STREQ(text.getCString(), "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
    const Char16 lone[] = {Char16('a'), Char16(0xD800), Char16('b'), Char16(0)};
    EXPECT_STREQ(String(lone).getCString(), "ab");
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
    EXPECT_EQ(FailureOf([] { String(String("abc"), 5); }), kOutOfBounds);
    String text("abc");
    EXPECT_EQ(text[3], Char16(0));
    EXPECT_EQ(FailureOf([&] { text[4]; }), kOutOfBounds);
}

TEST(String, ComparesAndFinds) {
    EXPECT_EQ(String::compare("a", "b"), -1);
    EXPECT_EQ(String::compare("b", "a"), 1);
    EXPECT_EQ(String::compare("a", "a"), 0);
    EXPECT_EQ(String::compareNoCase("B", "a"), 1);
    EXPECT_TRUE(String::equalNoCase("aB", "Ab"));
    EXPECT_EQ(String("abc").find("x"), PEG_NOT_FOUND);
    EXPECT_EQ(String("\xC3\xA9z").find("z"), 1U);
    EXPECT_EQ(TextOf(String("hello").subString(9)), "");
    EXPECT_EQ(TextOf(String("hello").subString(1, 3)), "ell");
}

TEST(String, MayHoldAZero) {
    const String text("buf\0x", 5);
    EXPECT_EQ(text.size(), 5U);
    EXPECT_STREQ(text.getCString(), "buf");
}

TEST(String, PrintsAsLatin1) {
    std::ostringstream out;
    out << String("a\xC3\xA9\xE2\x82\xAC\nz");
    EXPECT_EQ(out.str(), "a\xE9\\x20AC\nz");
}

TEST(String, ChangesThroughAUnitWithoutItsCopies) {
    String text("abc");
    const String copy = text;
    text[0] = Char16('x');
    EXPECT_EQ(TextOf(text), "xbc");
    EXPECT_EQ(TextOf(copy), "abc");
    EXPECT_EQ(TextOf(String(text)), "xbc");
}

TEST(Array, GuardsItsBounds) {
    Array<Uint32> numbers;
    numbers.insert(0, 1);
    const Array<Uint32> constant = numbers;
    EXPECT_EQ(FailureOf([&] { numbers[1]; }), kOutOfBounds);
    EXPECT_EQ(FailureOf([&] { constant[1]; }), kOutOfBounds);
    EXPECT_EQ(FailureOf([&] { numbers.remove(1); }), kOutOfBounds);
    EXPECT_EQ(FailureOf([&] { numbers.insert(2, 1); }), kOutOfBounds);
    EXPECT_EQ(FailureOf([&] { numbers.insert(1, 2); }), "nothing thrown");
}

TEST(Array, IsAValue) {
    Array<String> words(2, String("a"));
    const Array<String> copy = words;
    words[0] = "b";
    words.append(words[1]);
    EXPECT_EQ(TextOf(copy[0]), "a");
    EXPECT_EQ(copy.size(), 2U);
    EXPECT_EQ(TextOf(words[2]), "a");
}

TEST(Array, TakesElementsOfItselfHoweverItGrows) {
    Array<String> words(1, String("a text that is long enough"));
    for (Uint32 i = 0; i < 100; ++i) {
        const Array<String> copy = words;
        words.append(words[i]);
        words.append(copy[0]);
    }
    EXPECT_EQ(TextOf(words[200]), "a text that is long enough");
}

}  // namespace
