#include <gmock/gmock.h>

#include <stdexcept>

#include "simhost/fault.h"

namespace {

using simhost::Fault;
using simhost::Faults::ByName;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using ::testing::ThrowsMessage;
using Kind = simhost::Fault::Kind;

TEST(FaultNames, EachIsKnownAndExplained) {
    const auto names = simhost::Faults::Names();
    EXPECT_EQ(names.size(), 34U);
    for (const auto& [name, value, meaning] : names) {
        EXPECT_NO_THROW(ByName(name));
        EXPECT_TRUE(value == "" || value.rfind('=', 0) == 0) << name;
        EXPECT_NE(meaning, "") << name;
    }
}

TEST(FaultNames, TakeANumber) {
    EXPECT_EQ(ByName("truncate").number, 200);
    EXPECT_EQ(ByName("truncate=17").number, 17);
    EXPECT_EQ(ByName("wrong-length=-5").number, -5);
    EXPECT_EQ(ByName("slow-drip=3").pause, std::chrono::milliseconds(3));
}

TEST(FaultNames, TakeAText) {
    EXPECT_EQ(ByName("raw=hello, world").text, "hello, world");
    EXPECT_THAT(ByName("html-page").text, HasSubstr("<html>"));
    EXPECT_THAT(ByName("ssh-banner").text, StartsWith("SSH-2.0-"));
}

TEST(FaultNames, TakeANumberAndAText) {
    const Fault error = ByName("cim-error-element=6,not here, not there");
    EXPECT_EQ(error.kind, Kind::kCimErrorElement);
    EXPECT_EQ(error.number, 6);
    EXPECT_EQ(error.text, "not here, not there");
}

TEST(FaultNames, KnowTheReasonsOfStatuses) {
    EXPECT_EQ(ByName("http-status=403").text, "Forbidden");
    EXPECT_EQ(ByName("http-status").text, "Service Unavailable");
    EXPECT_EQ(ByName("http-status=500,Boom").text, "Boom");
    EXPECT_EQ(ByName("cim-error-header=400,request-not-valid").cim_error, "request-not-valid");
}

TEST(FaultNames, TellTheAbruptFormFromTheOther) {
    EXPECT_FALSE(ByName("close-every=3").abrupt);
    EXPECT_TRUE(ByName("close-every-silently=3").abrupt);
    EXPECT_TRUE(ByName("truncate-reset=3").abrupt);
}

TEST(FaultNames, TakeLimits) {
    EXPECT_EQ(ByName("stall@IBMSG_PCIDevice").only_class, "IBMSG_PCIDevice");
    EXPECT_EQ(ByName("stall@operation:Associators").only_operation, "Associators");
    const Fault limited = ByName("http-status@Card,after:2,times:3=500,a@b,c");
    EXPECT_EQ(limited.only_class, "Card");
    EXPECT_EQ(limited.after, 2U);
    EXPECT_EQ(limited.times, 3U);
    EXPECT_EQ(limited.number, 500);
    EXPECT_EQ(limited.text, "a@b,c");
    EXPECT_EQ(ByName("close-on-connect@times:1").times, 1U);
}

std::string RefusalOf(const std::string& text) {
    try {
        ByName(text);
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
    return "no error";
}

TEST(FaultNames, SayHowLimitsAreWritten) {
    for (const char* limits : {"", "Card,", "after:", "after:x", "after:-1", "times:0", "times:1x",
                               "operation:", "clas:Card"}) {
        const std::string text = std::string("stall@") + limits;
        EXPECT_EQ(RefusalOf(text), "unknown fault \"" + text +
                                       "\": write NAME@LIMIT,LIMIT with CLASS, operation:NAME, "
                                       "after:COUNT or times:COUNT for a LIMIT");
    }
    for (const char* limit : {"Card", "operation:Associators"}) {
        EXPECT_THAT(RefusalOf(std::string("ssh-banner@") + limit),
                    HasSubstr("leave out classes and operations"));
    }
}

TEST(FaultNames, SayWhatToWriteInstead) {
    EXPECT_THAT(RefusalOf("explode"), StartsWith("unknown fault \"explode\": write one of "
                                                 "close, reset, stall, "));
    EXPECT_EQ(RefusalOf("truncate=x"), "unknown fault \"truncate=x\": write truncate=NUMBER");
    EXPECT_EQ(RefusalOf("http-status=1x"),
              "unknown fault \"http-status=1x\": write http-status=NUMBER,TEXT");
    EXPECT_EQ(RefusalOf("slow-drip=9223372036854775807"),
              "unknown fault \"slow-drip=9223372036854775807\": write slow-drip=NUMBER");
    EXPECT_EQ(RefusalOf("close=5"), "unknown fault \"close=5\": write close without a text");
    EXPECT_EQ(RefusalOf("truncate=5,x"),
              "unknown fault \"truncate=5,x\": write truncate without a text");
}

}  // namespace
