// Date-times.
#include "object_model/datetime.h"

#include <gmock/gmock.h>

namespace {

using Pegasus::detail::IsDateTime;

TEST(DateTime, IsATimeStampOrAnIntervalOf25Characters) {
    for (const char* text :
         {"20230405060708.123456-300", "00000001020304.567890:000", "20230405******.******+060",
          "20230405060708.12345*+000", "2023**********.******+000", "**************.******:000",
          "00000001******.******:000", "99991231235959.999999+999"}) {
        EXPECT_TRUE(IsDateTime(text)) << text;
    }
    EXPECT_TRUE(IsDateTime(Pegasus::detail::kZeroInterval));
}

TEST(DateTime, HasNoOtherForm) {
    for (const char* text :
         {"", "2023", "20230405060708.123456-3000", "20230405 60708.123456-300",
          "20230405060708,123456-300", "********060708.123456-300", "2023040506**08.123456-300",
          "202304050607**.123456-300", "2023040506070*.******-300", "00000001020304.567890:001",
          "0000000*020304.567890:000", "20230405060708.123456+***", "20230405060708.123456 300"}) {
        EXPECT_FALSE(IsDateTime(text)) << text;
    }
}

TEST(DateTime, HasEveryFieldInItsRange) {
    for (const char* text :
         {"20231305060708.123456+000", "20230005060708.123456+000", "20230230060708.123456+000",
          "20230431060708.123456+000", "20230400060708.123456+000", "20230405240708.123456+000",
          "20230405250708.123456+000", "20230405066008.123456+000", "20230405060760.123456+000",
          "00000001240304.567890:000", "00000001026004.567890:000", "00000001020360.567890:000"}) {
        EXPECT_FALSE(IsDateTime(text)) << text;
    }
}

TEST(DateTime, KnowsLeapYears) {
    EXPECT_TRUE(IsDateTime("20240229000000.000000+000"));
    EXPECT_TRUE(IsDateTime("20000229000000.000000+000"));
    EXPECT_FALSE(IsDateTime("20230229000000.000000+000"));
    EXPECT_FALSE(IsDateTime("19000229000000.000000+000"));
}

}  // namespace
