// What values tell of themselves, give, and equal.
#include <gmock/gmock.h>

#include "Pegasus/Common/CIMClass.h"
#include "Pegasus/Common/CIMInstance.h"
#include "support/client_view.h"

namespace {

using namespace Pegasus;
using support::FailureOf;
using support::TextOf;

constexpr const char* kMismatch = "TypeMismatchException [type mismatch]";

Array<String> Words(const char* word) {
    Array<String> words;
    words.append(word);
    return words;
}

template <class T>
std::string GetAs(const CIMValue& value) {
    return FailureOf([&] {
        T x;
        value.get(x);
    });
}

TEST(Value, IsANullBooleanAtFirstAndWhenCleared) {
    CIMValue value(Uint32(1));
    value.clear();
    for (const CIMValue& one : {CIMValue(), value}) {
        EXPECT_TRUE(one.isNull());
        EXPECT_FALSE(one.isArray());
        EXPECT_EQ(one.getType(), CIMTYPE_BOOLEAN);
    }
}

TEST(Value, CountsItsElements) {
    EXPECT_EQ(CIMValue(Words("a")).getArraySize(), 1U);
    EXPECT_EQ(CIMValue(String("a")).getArraySize(), 0U);
    EXPECT_EQ(CIMValue(CIMTYPE_STRING, false).getArraySize(), 0U);
    EXPECT_EQ(CIMValue(CIMTYPE_STRING, true, 5).getArraySize(), 5U);
}

TEST(Value, GivesWhatItHolds) {
    String text;
    CIMValue(String("a")).get(text);
    EXPECT_EQ(TextOf(text), "a");
    Array<String> words;
    CIMValue(Words("w")).get(words);
    EXPECT_EQ(TextOf(words[0]), "w");
    Uint16 number = 0;
    CIMValue(Uint16(7)).get(number);
    EXPECT_EQ(number, 7);
    Real32 real = 0;
    CIMValue(Real32(1.5F)).get(real);
    EXPECT_EQ(real, 1.5F);
}

TEST(Value, ThatIsNullLeavesTheArgumentAsItWas) {
    Array<String> words = Words("before");
    CIMValue(CIMTYPE_STRING, true).get(words);
    EXPECT_EQ(TextOf(words[0]), "before");
    String text;
    CIMValue(CIMTYPE_STRING, false).get(text);
    EXPECT_EQ(TextOf(text), "");
}

TEST(Value, IsGivenAsItsOwnTypeOnly) {
    Array<Uint16> numbers;
    const CIMInstance instance(CIMName("K"));
    EXPECT_EQ(GetAs<Array<String>>(String("a")), kMismatch);
    EXPECT_EQ(GetAs<Array<String>>(Uint32(1)), kMismatch);
    EXPECT_EQ(GetAs<Array<String>>(numbers), kMismatch);
    EXPECT_EQ(GetAs<Array<String>>(CIMValue(CIMTYPE_STRING, false)), kMismatch);
    EXPECT_EQ(GetAs<String>(Words("a")), kMismatch);
    EXPECT_EQ(GetAs<String>(Uint16(1)), kMismatch);
    EXPECT_EQ(GetAs<Uint64>(Uint32(1)), kMismatch);
    EXPECT_EQ(GetAs<Uint32>(Uint16(1)), kMismatch);
    EXPECT_EQ(GetAs<CIMObject>(instance), kMismatch);
    EXPECT_EQ(GetAs<CIMInstance>(CIMObject(instance)), kMismatch);
    EXPECT_EQ(GetAs<String>(CIMValue()), kMismatch);
}

TEST(Value, EqualsInTypeKindAndContent) {
    EXPECT_EQ(CIMValue(String("a")), CIMValue(String("a")));
    EXPECT_EQ(CIMValue(CIMTYPE_STRING, false), CIMValue(CIMTYPE_STRING, false));
    EXPECT_NE(CIMValue(CIMTYPE_STRING, false), CIMValue(String("")));
    EXPECT_NE(CIMValue(Uint32(1)), CIMValue(Uint16(1)));
    EXPECT_NE(CIMValue(Words("a")), CIMValue(String("a")));
    EXPECT_NE(CIMValue(Words("a")), CIMValue(Words("b")));
    EXPECT_TRUE(CIMValue(String("a")).typeCompatible(CIMValue(CIMTYPE_STRING, false)));
    EXPECT_FALSE(CIMValue(String("a")).typeCompatible(Words("a")));
}

TEST(Value, KeepsEmbeddedObjectsAsTheyWere) {
    CIMInstance instance(CIMName("K"));
    const CIMValue value(instance);
    instance.addProperty(CIMProperty("p", Uint8(1)));
    EXPECT_EQ(TextOf(value.toString()), "<INSTANCE CLASSNAME=\"K\" >\n</INSTANCE>\n");
}

TEST(Value, CannotBeMadeOfNoObject) {
    constexpr const char* kUninitialized = "UninitializedObjectException [uninitialized object]";
    EXPECT_EQ(FailureOf([] { CIMValue value((CIMInstance())); }), kUninitialized);
    EXPECT_EQ(FailureOf([] { CIMValue value((CIMObject())); }), kUninitialized);
}

}  // namespace
