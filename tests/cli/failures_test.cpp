// From the module's log messages to explanations for people.
#include <gmock/gmock.h>

#include <sstream>

#include "cli/failure_explanation.h"
#include "cli/failure_log.h"
#include "cli/failure_report.h"
#include "common/log/log_control.h"
#include "common/log/log_message.h"

namespace {

using namespace command;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

struct Meaning {
    const char* reason;
    Cause cause;
    const char* meaning;
};

class Explanations : public testing::TestWithParam<Meaning> {};

TEST_P(Explanations, TellCauseMeaningAndRemedy) {
    const Explanation& explanation = Explain(GetParam().reason);
    EXPECT_EQ(explanation.cause, GetParam().cause);
    EXPECT_THAT(explanation.meaning, HasSubstr(GetParam().meaning));
    EXPECT_STRNE(explanation.remedy, "");
}

const Meaning kMeanings[] = {
    {"HTTP Error (401 Unauthorized).", Cause::kRefused, "user name or password"},
    {"HTTP Error (401 Unauthorized).", Cause::kRefused, "lacks the CIM permission"},
    {"HTTP Error (403 Forbidden).", Cause::kRefused, "does not let this account"},
    {"HTTP Error (503 Service Unavailable).", Cause::kUnreachable, "overloaded"},
    {"HTTP Error (500 Internal Server Error).", Cause::kUnreachable, "CIM service failed"},
    {"HTTP Error (404 Not Found).", Cause::kNoCimServer, "no CIM server"},
    {"Bad Content-Type HTTP header; text/html", Cause::kNoCimServer, "no CIM server"},
    {"Malformed HTTP response message.", Cause::kNoCimServer, "no CIM server"},
    {"Connection closed by CIM Server.", Cause::kUnreachable, "closed the connection"},
    {"connection timed out", Cause::kUnreachable, "did not answer in time"},
    {"Cannot connect to esx:5989. Connection failed.", Cause::kUnreachable, "connected"},
    {"Invalid locator: esx:5989", Cause::kUnreachable, "resolved"},
    {"One or more tags are still open: on line 7", Cause::kBadReply, "cut off"},
    {"Semantic error: on line 6: duplicate property", Cause::kBadReply, "CIM-XML"},
    {"Bad attribute value: on line 6", Cause::kBadReply, "cut off or is damaged"},
    {"Validation error: on line 1: Expected <?xml ... ?> style declaration", Cause::kBadReply,
     "cut off or is no CIM-XML"},
    {"CIM_ERR_INVALID_NAMESPACE: root/ibmsd", Cause::kCimError, "namespace is unknown"},
    {"CIM_ERR_INVALID_CLASS: X", Cause::kCimError, "class is unknown"},
    {"Class not found", Cause::kCimError, "class is unknown"},
    {"Provider not found or not loadable", Cause::kCimError, "not running"},
    {"CIM_ERR_ACCESS_DENIED", Cause::kCimError, "does not let this account"},
    {"ThreadPool --- Failed to enqueue request", Cause::kUnreachable, "overloaded"},
    {"The disk mentions HTTP Error (401 in passing", Cause::kCimError, "reported an error"},
    {"", Cause::kCimError, "reported an error"},
};

INSTANTIATE_TEST_SUITE_P(, Explanations, testing::ValuesIn(kMeanings));

class FailureLogTest : public testing::Test {
protected:
    ~FailureLogTest() override { Zentar::SetMinLogLevel(1); }

    static void LogRequestFor(const char* class_name) {
        ZENTAR_LOG(3) << "The value of class name is:" << class_name;
    }
};

TEST_F(FailureLogTest, RemembersReasonsWithTheClassThatWasAskedFor) {
    FailureLog log(0);
    LogRequestFor("OMC_Chassis");
    ZENTAR_LOG(1) << "Enumerate instances failed with the reason: connection timed out";
    EXPECT_THAT(log.Take(), ElementsAre(Failure{"OMC_Chassis", "connection timed out", true}));
    EXPECT_THAT(log.Take(), IsEmpty());
}

TEST_F(FailureLogTest, RemembersARepeatedFailureOnce) {
    FailureLog log(0);
    for (int i = 0; i < 3; ++i) {
        ZENTAR_LOG(1) << "Enumerate associators failed with the reason: busy";
    }
    EXPECT_THAT(log.Take(), ElementsAre(Failure{"", "busy", false}));
}

TEST_F(FailureLogTest, AssociatorsAndPropertiesAreNoWholeRequests) {
    FailureLog log(0);
    LogRequestFor("IBMSG_PCIDevice");
    ZENTAR_LOG(3) << "Calling GetCIMArrayFromAssociators()";
    ZENTAR_LOG(1) << "Enumerate associators failed with the reason: x";
    ZENTAR_LOG(1) << "Get properties from CIM instance failed with the reason: y";
    EXPECT_THAT(log.Take(), ElementsAre(Failure{"", "x", false}, Failure{"", "y", false}));
}

TEST_F(FailureLogTest, KeepsAReasonWithoutText) {
    FailureLog log(0);
    ZENTAR_LOG(1) << "Enumerate instances failed with the reason: ";
    EXPECT_THAT(log.Take(), ElementsAre(Failure{"", "", true}));
}

TEST_F(FailureLogTest, ForwardsOnlyUpToItsLevel) {
    testing::internal::CaptureStderr();
    {
        FailureLog log(2);
        for (unsigned level = 1; level <= 4; ++level) {
            ZENTAR_LOG(level) << "level" << level << ";";
        }
    }
    const std::string written = testing::internal::GetCapturedStderr();
    EXPECT_THAT(written, testing::AllOf(HasSubstr("level1;"), HasSubstr("level2;")));
    EXPECT_EQ(written.find("level3;"), std::string::npos);
}

TEST(FailureReport, TellsEachFailureOnceWithItsSections) {
    FailureReport report;
    const Failure refused{"A", "HTTP Error (401 Unauthorized).", true};
    report.Add("system", {refused, refused});
    report.Add("os", {refused});
    report.Add("pci", {{"B", "odd\x1B\nline", true}, {"C", "", true}});
    std::ostringstream out;
    report.Write(out);
    EXPECT_EQ(out.str(),
              "kalvex: system, os: the host refused the user name or password, or the account "
              "lacks the CIM permission (HTTP Error (401 Unauthorized).); check --user and the "
              "password\n"
              "kalvex: pci: the host reported an error (odd\\x1B\\nline); try again, and look "
              "into the host's CIM service if it persists\n"
              "kalvex: pci: the host reported an error (no reason given for C); try again, and "
              "look into the host's CIM service if it persists\n");
}

}  // namespace
