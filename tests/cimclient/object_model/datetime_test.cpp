// Date-times.
#include <gmock/gmock.h>

#include "Pegasus/Common/CIMDateTime.h"
#include "support/client_view.h"

namespace {

using namespace Pegasus;
using support::FailureOf;
using support::TextOf;

TEST(DateTime, PrintsAsItWasGiven) {
    for (const char* text :
         {"20230405060708.123456-300", "00000001020304.567890:000", "20230405******.******+060",
          "20230405060708.12345*+000", "99991231235959.999999+999"}) {
        EXPECT_EQ(TextOf(CIMDateTime(text).toString()), text);
    }
}

TEST(DateTime, RefusesOtherForms) {
    for (const char* text :
         {"", "2023", "20230405060708.123456-3000", "20230405 60708.123456-300",
          "20230405060708,123456-300", "********060708.123456-300", "2023040506**08.123456-300",
          "00000001020304.567890:001", "20230405060708.123456+***"}) {
        EXPECT_EQ(FailureOf([&] { CIMDateTime time(text); }),
                  "InvalidDateTimeFormatException [invalid datetime format]")
            << text;
    }
}

TEST(DateTime, NamesTheFieldThatIsOutOfRange) {
    struct Refusal {
        const char* text;
        const char* what;
    };
    const Refusal refusals[] = {
        {"20231305060708.123456+000", "illegal month number"},
        {"20230005060708.123456+000", "illegal month number"},
        {"20230230060708.123456+000", "illegal day number"},
        {"20230405240708.123456+000", "illegal hours number "},
        {"20230405250708.123456+000", "illegal hours number "},
        {"20230405060760.123456+000", "illegal seconds number "},
    };
    for (const Refusal& refusal : refusals) {
        EXPECT_EQ(FailureOf([&] { CIMDateTime time(refusal.text); }),
                  "DateTimeOutOfRangeException [DateTime is out of range : " +
                      std::string(refusal.what) + "]");
    }
}

TEST(DateTime, ComparesInstants) {
    EXPECT_TRUE(CIMDateTime("20230405060708.000000+060") ==
                CIMDateTime("20230405050708.000000+000"));
    EXPECT_FALSE(CIMDateTime("20230405060708.000000+060") ==
                 CIMDateTime("20230405060708.000000+000"));
}

TEST(DateTime, CountsMicroseconds) {
    const CIMDateTime second(1000000, true);
    EXPECT_EQ(TextOf(second.toString()), "00000000000001.000000:000");
    EXPECT_TRUE(second.isInterval());
    EXPECT_EQ(second.toMicroSeconds(), 1000000U);
    EXPECT_TRUE(CIMDateTime().isInterval());
    EXPECT_EQ(CIMDateTime::getDifference(CIMDateTime("20230405060708.000000+000"),
                                         CIMDateTime("20230405060709.000000+000")),
              1000000);
}

TEST(DateTime, CalculatesOnlyWhatAnIntervalCanHold) {
    const CIMDateTime day("00000001000000.000000:000");
    EXPECT_EQ(TextOf((day * 3).toString()), "00000003000000.000000:000");
    EXPECT_EQ(TextOf((day / 2).toString()), "00000000120000.000000:000");
    EXPECT_THROW(day * 100000000, DateTimeOutOfRangeException);
    EXPECT_THROW(day * ~Uint64{0}, DateTimeOutOfRangeException);
    EXPECT_THROW(day / 0, DateTimeOutOfRangeException);
}

}  // namespace
