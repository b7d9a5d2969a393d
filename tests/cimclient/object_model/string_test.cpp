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

TEST(String, GivesUtf8) {
    const String text("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_STREQ(text.getCString(), "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
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

TEST(String, MayHoldAZero) {
    const String text = String::FromUtf8({"buf\0x", 5});
    EXPECT_EQ(text.utf8().size(), 5U);
    EXPECT_STREQ(text.getCString(), "buf");
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
