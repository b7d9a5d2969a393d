// The texts of values, scalar and array.
#include <gmock/gmock.h>

#include <cfloat>
#include <cmath>
#include <limits>

#include "Pegasus/Common/CIMInstance.h"
#include "Pegasus/Common/CIMValue.h"
#include "support/client_view.h"

namespace {

using namespace Pegasus;
using support::TextOf;

template <class T>
using Limits = std::numeric_limits<T>;

struct ValueText {
    CIMValue value;
    const char* text;
};

void ExpectTexts(const std::vector<ValueText>& cases) {
    for (const ValueText& one : cases) {
        EXPECT_EQ(TextOf(one.value.toString()), one.text);
    }
}

template <class T>
Array<T> Of(std::initializer_list<T> items) {
    Array<T> array;
    for (const T& item : items) {
        array.append(item);
    }
    return array;
}

const CIMDateTime kStamp("20230405060708.123456-300");
const CIMDateTime kInterval("00000001020304.567890:000");

TEST(ScalarText, OfBooleansIsInCapitals) {
    ExpectTexts({{CIMValue(Boolean(true)), "TRUE"}, {CIMValue(Boolean(false)), "FALSE"}});
}

TEST(ScalarText, OfIntegersIsDecimal) {
    ExpectTexts({
        {CIMValue(Uint8(0)), "0"},
        {CIMValue(Uint8(65)), "65"},
        {CIMValue(Uint8(255)), "255"},
        {CIMValue(Sint8(-128)), "-128"},
        {CIMValue(Sint8(65)), "65"},
        {CIMValue(Uint16(65535)), "65535"},
        {CIMValue(Sint16(-32768)), "-32768"},
        {CIMValue(Uint32(4294967295)), "4294967295"},
        {CIMValue(Limits<Sint32>::min()), "-2147483648"},
        {CIMValue(Limits<Uint64>::max()), "18446744073709551615"},
        {CIMValue(Limits<Sint64>::min()), "-9223372036854775808"},
        {CIMValue(Limits<Sint64>::max()), "9223372036854775807"},
    });
}

TEST(ScalarText, OfRealsHasSixteenDigitsAfterThePoint) {
    ExpectTexts({
        {CIMValue(Real64(0.0)), "0.0000000000000000e+00"},
        {CIMValue(Real64(-0.0)), "-0.0000000000000000e+00"},
        {CIMValue(Real64(1)), "1.0000000000000000e+00"},
        {CIMValue(Real64(1.5)), "1.5000000000000000e+00"},
        {CIMValue(Real64(-1.5)), "-1.5000000000000000e+00"},
        {CIMValue(Real64(0.1)), "1.0000000000000001e-01"},
        {CIMValue(Real64(100)), "1.0000000000000000e+02"},
        {CIMValue(Real64(123456789)), "1.2345678900000000e+08"},
        {CIMValue(Real64(1e300)), "1.0000000000000001e+300"},
        {CIMValue(Real64(5e-324)), "4.9406564584124654e-324"},
        {CIMValue(Limits<Real64>::quiet_NaN()), "nan"},
        {CIMValue(std::copysign(Limits<Real64>::quiet_NaN(), -1.0)), "-nan"},
        {CIMValue(Limits<Real64>::infinity()), "inf"},
        {CIMValue(-Limits<Real64>::infinity()), "-inf"},
    });
}

TEST(ScalarText, OfShortRealsIsThatOfLongOnes) {
    ExpectTexts({
        {CIMValue(Real32(0.1F)), "1.0000000149011612e-01"},
        {CIMValue(Real32(1.5F)), "1.5000000000000000e+00"},
        {CIMValue(Real32(FLT_MAX)), "3.4028234663852886e+38"},
        {CIMValue(Real32(1e-10F)), "1.0000000133514320e-10"},
        {CIMValue(Limits<Real32>::quiet_NaN()), "nan"},
        {CIMValue(Limits<Real32>::infinity()), "inf"},
    });
}

TEST(ScalarText, OfCharactersIsUtf8) {
    ExpectTexts({{CIMValue(Char16('A')), "A"},
                 {CIMValue(Char16(0x20AC)), "\xE2\x82\xAC"},
                 {CIMValue(Char16(10)), "\n"}});
    EXPECT_STREQ(CIMValue(Char16(0)).toString().getCString(), "");
}

TEST(ScalarText, OfStringsIsVerbatim) {
    ExpectTexts({{CIMValue(String("a b ")), "a b "},
                 {CIMValue(String("\"<&>'\\\n")), "\"<&>'\\\n"},
                 {CIMValue(String("")), ""}});
}

TEST(ScalarText, OfDateTimesIsTheFormOf25Characters) {
    ExpectTexts({{CIMValue(kStamp), "20230405060708.123456-300"},
                 {CIMValue(kInterval), "00000001020304.567890:000"},
                 {CIMValue(CIMDateTime("20230405******.******+060")), "20230405******.******+060"},
                 {CIMValue(CIMDateTime()), "00000000000000.000000:000"}});
}

TEST(ScalarText, OfReferencesIsThePath) {
    ExpectTexts({{CIMValue(CIMObjectPath("//h:5988/root/cimv2:X.b=2,a=\"1\"")),
                  "//h:5988/root/cimv2:X.a=\"1\",b=2"}});
}

TEST(NullText, IsEmptyForEveryType) {
    for (int type = CIMTYPE_BOOLEAN; type <= CIMTYPE_INSTANCE; ++type) {
        for (const Boolean is_array : {Boolean(false), Boolean(true)}) {
            const CIMValue null(static_cast<CIMType>(type), is_array);
            EXPECT_EQ(TextOf(null.toString()), "") << type;
            EXPECT_TRUE(null.isNull());
        }
    }
}

TEST(ArrayText, WithoutElementsIsEmptyForEveryType) {
    ExpectTexts({{CIMValue(Array<Boolean>()), ""},
                 {CIMValue(Array<Uint8>()), ""},
                 {CIMValue(Array<Sint8>()), ""},
                 {CIMValue(Array<Uint16>()), ""},
                 {CIMValue(Array<Sint16>()), ""},
                 {CIMValue(Array<Uint32>()), ""},
                 {CIMValue(Array<Sint32>()), ""},
                 {CIMValue(Array<Uint64>()), ""},
                 {CIMValue(Array<Sint64>()), ""},
                 {CIMValue(Array<Real32>()), ""},
                 {CIMValue(Array<Real64>()), ""},
                 {CIMValue(Array<Char16>()), ""},
                 {CIMValue(Array<String>()), ""},
                 {CIMValue(Array<CIMDateTime>()), ""},
                 {CIMValue(Array<CIMObjectPath>()), ""},
                 {CIMValue(Array<CIMObject>()), ""},
                 {CIMValue(Array<CIMInstance>()), ""}});
    EXPECT_FALSE(CIMValue(Array<Uint8>()).isNull());
}

TEST(ArrayText, HasABlankBehindEachElement) {
    ExpectTexts({
        {CIMValue(Of<Boolean>({true})), "TRUE "},
        {CIMValue(Of<Boolean>({true, false, true})), "TRUE FALSE TRUE "},
        {CIMValue(Of<Uint8>({1, 2, 255})), "1 2 255 "},
        {CIMValue(Of<Sint8>({-1})), "-1 "},
        {CIMValue(Of<Uint16>({1, 65535})), "1 65535 "},
        {CIMValue(Of<Sint16>({-2})), "-2 "},
        {CIMValue(Of<Uint32>({3})), "3 "},
        {CIMValue(Of<Sint32>({-3})), "-3 "},
        {CIMValue(Of<Uint64>({1, 2, Limits<Uint64>::max()})), "1 2 18446744073709551615 "},
        {CIMValue(Of<Sint64>({-4})), "-4 "},
        {CIMValue(Of<Real32>({0, 1.5F, -2})),
         "0.0000000000000000e+00 1.5000000000000000e+00 -2.0000000000000000e+00 "},
        {CIMValue(Of<Real64>({1})), "1.0000000000000000e+00 "},
        {CIMValue(Of<Char16>({Char16('a'), Char16('b'), Char16('c')})), "a b c "},
        {CIMValue(Of<CIMDateTime>({kStamp, kInterval, CIMDateTime()})),
         "20230405060708.123456-300 00000001020304.567890:000 00000000000000.000000:000 "},
        {CIMValue(Of<CIMObjectPath>({CIMObjectPath("A.k=1"), CIMObjectPath("B.k=\"x\""),
                                     CIMObjectPath("root/x:C.k=true")})),
         "A.k=1 B.k=\"x\" root/x:C.k=TRUE "},
    });
}

TEST(ArrayText, OfStringsHasNoQuotes) {
    ExpectTexts({{CIMValue(Of<String>({"one"})), "one "},
                 {CIMValue(Of<String>({"one", "two words", ""})), "one two words  "},
                 {CIMValue(Of<String>({""})), " "},
                 {CIMValue(Of<String>({"", "", "x, y"})), "  x, y "}});
}

TEST(ArrayText, OfObjectsHasTheBlankBehindTheirLastLine) {
    const CIMInstance instance(CIMName("K"));
    EXPECT_EQ(TextOf(CIMValue(Of<CIMInstance>({instance, instance})).toString()),
              "<INSTANCE CLASSNAME=\"K\" >\n</INSTANCE>\n <INSTANCE CLASSNAME=\"K\" "
              ">\n</INSTANCE>\n ");
    EXPECT_EQ(TextOf(CIMValue(Of<CIMObject>({CIMObject(instance)})).toString()),
              "<INSTANCE CLASSNAME=\"K\" >\n</INSTANCE>\n ");
}

}  // namespace
