#include "inventory/failure_meanings.h"

#include <gmock/gmock.h>

#include <set>

namespace {

using namespace inventory;
using Zentar::Failure;
using Zentar::FailureKind;
using Zentar::FailurePhase;

TEST(FailureMeanings, EveryKindHasAMeaningOfItsOwnAndAdvice) {
    std::set<std::string> meanings;
    for (const auto& name : Zentar::kFailureKinds) {
        EXPECT_STRNE(MeaningOf(name.kind).meaning, "") << name.word;
        EXPECT_STRNE(MeaningOf(name.kind).advice, "") << name.word;
        meanings.insert(MeaningOf(name.kind).meaning);
    }
    EXPECT_EQ(meanings.size(), std::size(Zentar::kFailureKinds));
}

TEST(FailureMeanings, DescribeKindPhaseAndText) {
    Failure failure;
    failure.kind = FailureKind::kBusy;
    EXPECT_EQ(DescribeFailure(failure), "the host's CIM service is overloaded or starting");
    failure.text = "x";
    EXPECT_EQ(DescribeFailure(failure), "the host's CIM service is overloaded or starting (x)");
    failure.phase = FailurePhase::kWaiting;
    EXPECT_EQ(DescribeFailure(failure),
              "the host's CIM service is overloaded or starting (while waiting for the answer: x)");
    failure.text = "";
    EXPECT_EQ(DescribeFailure(failure),
              "the host's CIM service is overloaded or starting (while waiting for the answer)");
}

}  // namespace
