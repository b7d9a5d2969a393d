// Values that are made by hand: their types and texts, and what they give.
#include <gmock/gmock.h>

#include <limits>

#include "Pegasus/Common/CIMValue.h"
#include "object_model/value_texts.h"
#include "support/client_view.h"

namespace {

using namespace Pegasus;
using support::FailureOf;
using support::TextOf;
using support::ViewOf;

Array<String> Words(std::initializer_list<const char*> words) {
    Array<String> array;
    for (const char* word : words) {
        array.append(word);
    }
    return array;
}

TEST(Value, PrintsAsItsTypeDoes) {
    EXPECT_EQ(ViewOf(CIMValue(true)), "boolean [TRUE]");
    EXPECT_EQ(ViewOf(CIMValue(false)), "boolean [FALSE]");
    EXPECT_EQ(ViewOf(CIMValue(Uint16(65535))), "uint16 [65535]");
    EXPECT_EQ(ViewOf(CIMValue(Uint32(4294967295))), "uint32 [4294967295]");
    EXPECT_EQ(ViewOf(CIMValue(~Uint64{0})), "uint64 [18446744073709551615]");
    EXPECT_EQ(ViewOf(CIMValue(String("\"<&>'\\\n a "))), "string [\"<&>'\\\n a ]");
    EXPECT_EQ(ViewOf(CIMValue(String())), "string []");
}

TEST(RealText, IsThatOfPrintf) {
    const std::pair<Real64, const char*> texts[] = {
        {0.0, "0.0000000000000000e+00"},
        {-0.0, "-0.0000000000000000e+00"},
        {-1.5, "-1.5000000000000000e+00"},
        {0.1, "1.0000000000000001e-01"},
        {123456789, "1.2345678900000000e+08"},
        {1e300, "1.0000000000000001e+300"},
        {5e-324, "4.9406564584124654e-324"},
        {0.1F, "1.0000000149011612e-01"},
        {std::numeric_limits<Real64>::quiet_NaN(), "nan"},
        {-std::numeric_limits<Real64>::infinity(), "-inf"},
    };
    for (const auto& [value, text] : texts) {
        EXPECT_EQ(detail::RealText(value), text);
    }
}

TEST(Value, OfAnArrayPrintsABlankAfterEachElement) {
    EXPECT_EQ(ViewOf(CIMValue(Words({}))), "string[] []");
    EXPECT_EQ(ViewOf(CIMValue(Words({"one"}))), "string[] [one ]");
    EXPECT_EQ(ViewOf(CIMValue(Words({"one", "two words", ""}))), "string[] [one two words  ]");
    EXPECT_EQ(ViewOf(CIMValue(Words({""}))), "string[] [ ]");
    EXPECT_EQ(ViewOf(CIMValue(Words({"", "", "x, y"}))), "string[] [  x, y ]");
}

TEST(Value, ThatIsNullPrintsNothing) {
    EXPECT_EQ(ViewOf(CIMValue()), "boolean null");
    for (int type = CIMTYPE_BOOLEAN; type <= CIMTYPE_INSTANCE; ++type) {
        for (const Boolean is_array : {false, true}) {
            const CIMValue null(static_cast<CIMType>(type), is_array);
            EXPECT_TRUE(null.isNull());
            EXPECT_EQ(TextOf(null.toString()), "") << type;
        }
    }
}

TEST(Value, GivesItsStrings) {
    Array<String> words = Words({"before"});
    CIMValue(CIMTYPE_STRING, true).get(words);
    EXPECT_EQ(TextOf(words[0]), "before") << "null leaves the argument as it was";
    CIMValue(Words({"a", "b"})).get(words);
    ASSERT_EQ(words.size(), 2U);
    EXPECT_EQ(TextOf(words[1]), "b");
}

TEST(Value, GivesNothingOfAnotherType) {
    Array<String> words;
    for (const CIMValue& other :
         {CIMValue(), CIMValue(String("a")), CIMValue(CIMTYPE_STRING, false), CIMValue(Uint32(1)),
          CIMValue(CIMTYPE_UINT16, true)}) {
        EXPECT_EQ(FailureOf([&] { other.get(words); }), "TypeMismatchException [type mismatch]");
    }
}

TEST(Value, IsNotChangedThroughCopiesOfItsStrings) {
    Array<String> words = Words({"a"});
    const CIMValue value(words);
    words[0] = "b";
    EXPECT_EQ(ViewOf(value), "string[] [a ]");
}

}  // namespace
