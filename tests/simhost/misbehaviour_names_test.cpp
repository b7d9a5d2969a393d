#include <gmock/gmock.h>

#include <stdexcept>

#include "simhost/misbehaviour.h"

namespace {

using simhost::Misbehaviour;
using simhost::Misbehaviours::ByName;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using ::testing::ThrowsMessage;
using Kind = simhost::Misbehaviour::Kind;

TEST(MisbehaviourNames, EachIsKnownAndExplained) {
    const auto names = simhost::Misbehaviours::Names();
    EXPECT_EQ(names.size(), 24U);
    for (const auto& [name, meaning] : names) {
        EXPECT_NO_THROW(ByName(name));
        EXPECT_NE(meaning, "") << name;
    }
}

TEST(MisbehaviourNames, TakeANumber) {
    EXPECT_EQ(ByName("truncate").number, 200);
    EXPECT_EQ(ByName("truncate=17").number, 17);
    EXPECT_EQ(ByName("wrong-length=-5").number, -5);
    EXPECT_EQ(ByName("slow-drip=3").pause, std::chrono::milliseconds(3));
}

TEST(MisbehaviourNames, TakeAText) {
    EXPECT_EQ(ByName("raw=hello, world").text, "hello, world");
    EXPECT_THAT(ByName("html-page").text, HasSubstr("<html>"));
    EXPECT_THAT(ByName("ssh-banner").text, StartsWith("SSH-2.0-"));
}

TEST(MisbehaviourNames, TakeANumberAndAText) {
    const Misbehaviour error = ByName("cim-error-element=6,not here, not there");
    EXPECT_EQ(error.kind, Kind::kCimErrorElement);
    EXPECT_EQ(error.number, 6);
    EXPECT_EQ(error.text, "not here, not there");
}

TEST(MisbehaviourNames, KnowTheReasonsOfStatuses) {
    EXPECT_EQ(ByName("http-status=403").text, "Forbidden");
    EXPECT_EQ(ByName("http-status").text, "Service Unavailable");
    EXPECT_EQ(ByName("http-status=500,Boom").text, "Boom");
    EXPECT_EQ(ByName("cim-error-header=400,request-not-valid").cim_error, "request-not-valid");
}

TEST(MisbehaviourNames, TellTheAbruptFormFromTheOther) {
    EXPECT_FALSE(ByName("close-every=3").abrupt);
    EXPECT_TRUE(ByName("close-every-silently=3").abrupt);
    EXPECT_TRUE(ByName("truncate-reset=3").abrupt);
}

TEST(MisbehaviourNames, SayWhatToWriteInstead) {
    const auto error_of = [](const char* text) {
        try {
            ByName(text);
        } catch (const std::invalid_argument& error) {
            return std::string(error.what());
        }
        return std::string("no error");
    };
    EXPECT_THAT(error_of("explode"), StartsWith("unknown misbehaviour \"explode\": write one of "
                                                "close, reset, stall, "));
    EXPECT_EQ(error_of("truncate=x"), "unknown misbehaviour \"truncate=x\": write truncate=NUMBER");
    EXPECT_EQ(error_of("http-status=1x"),
              "unknown misbehaviour \"http-status=1x\": write http-status=NUMBER,TEXT");
    EXPECT_EQ(error_of("close=5"), "unknown misbehaviour \"close=5\": write close without a text");
    EXPECT_EQ(error_of("truncate=5,x"),
              "unknown misbehaviour \"truncate=5,x\": write truncate without a text");
}

}  // namespace
