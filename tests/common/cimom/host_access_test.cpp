// What the connections to one host share.
#include "common/cimom/src/host_access.h"

#include <gmock/gmock.h>

#include "support/recorded_sleep.h"

namespace {

using support::TakePauses;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Zentar::CancelHandle;
using Zentar::Failure;
using Zentar::FailureKind;
using Zentar::FailureList;
using Zentar::HostAccess;
using ZentarConnection::ConnectionOptions;
using namespace std::chrono_literals;

Failure Of(FailureKind kind, const std::string& text = "") {
    Failure failure;
    failure.kind = kind;
    failure.text = text;
    return failure;
}

std::vector<std::string> TextsOf(const FailureList& list) {
    std::vector<std::string> texts;
    for (const Failure& failure : list.failures) {
        texts.push_back(failure.text);
    }
    return texts;
}

ConnectionOptions GivingUp() {
    ConnectionOptions options;
    options.give_up = true;
    return options;
}

TEST(HostAccess, HandsOutEachFailureOnceAndInOrder) {
    HostAccess access;
    access.Note(Of(FailureKind::kBusy, "first"));
    access.Note(Of(FailureKind::kBadReply, "second"));
    EXPECT_THAT(TextsOf(access.TakeFailures()), ElementsAre("first", "second"));
    EXPECT_THAT(TextsOf(access.TakeFailures()), IsEmpty());
}

TEST(HostAccess, KeepsTheNewestThousandFailuresAndCountsTheRest) {
    HostAccess access;
    for (int i = 0; i < 1003; ++i) {
        access.Note(Of(FailureKind::kBusy, std::to_string(i)));
    }
    const FailureList list = access.TakeFailures();
    EXPECT_EQ(list.failures.size(), 1000U);
    EXPECT_EQ(list.dropped, 3U);
    EXPECT_EQ(list.failures.front().text, "3");
    EXPECT_EQ(list.failures.back().text, "1002");
    EXPECT_EQ(access.TakeFailures().dropped, 0U);
}

TEST(HostAccess, WithoutOptionsHasNoEnd) {
    HostAccess access;
    access.NoteUnreachable(Of(FailureKind::kUnreachable));
    access.NoteFailedRequest(Of(FailureKind::kCredentialsRefused));
    access.NoteFailedRequest(Of(FailureKind::kTimedOut));
    access.NoteFailedRequest(Of(FailureKind::kTimedOut));
    EXPECT_FALSE(access.HasEnded());
    EXPECT_EQ(access.Clipped(300s), 300000U);
}

TEST(HostAccess, CanBeCancelledWithoutOptions) {
    HostAccess access;
    access.Cancel();
    EXPECT_EQ(access.Ending()->kind, FailureKind::kCancelled);
    access.Note(Of(FailureKind::kBadReply));
    EXPECT_EQ(access.TakeFailures().failures.at(0).kind, FailureKind::kCancelled);
}

TEST(HostAccess, SharesTheCallersHandle) {
    ConnectionOptions options;
    options.cancel = CancelHandle::Make();
    HostAccess access(options);
    HostAccess other(options);
    access.Cancel();
    EXPECT_TRUE(options.cancel.IsCancelled());
    EXPECT_TRUE(other.HasEnded());
}

TEST(HostAccess, GivesUpAHostThatCannotBeReached) {
    HostAccess access(GivingUp());
    access.NoteUnreachable(Of(FailureKind::kUnreachable, "refused"));
    ASSERT_TRUE(access.HasEnded());
    EXPECT_EQ(access.Ending()->kind, FailureKind::kUnreachable);
    EXPECT_EQ(access.Ending()->text, "refused");
}

TEST(HostAccess, GivesUpAfterTwoTimeoutsInARow) {
    HostAccess access(GivingUp());
    access.NoteFailedRequest(Of(FailureKind::kTimedOut));
    EXPECT_FALSE(access.HasEnded());
    access.NoteAnswer();
    access.NoteFailedRequest(Of(FailureKind::kTimedOut));
    access.NoteFailedRequest(Of(FailureKind::kCimError));
    access.NoteFailedRequest(Of(FailureKind::kTimedOut));
    EXPECT_FALSE(access.HasEnded());
    access.NoteFailedRequest(Of(FailureKind::kTimedOut));
    EXPECT_TRUE(access.HasEnded());
}

TEST(HostAccess, GivesUpOnceTheCredentialsAreRefused) {
    HostAccess access(GivingUp());
    access.NoteFailedRequest(Of(FailureKind::kNotPermitted));
    EXPECT_FALSE(access.HasEnded());
    access.NoteFailedRequest(Of(FailureKind::kCredentialsRefused));
    EXPECT_TRUE(access.HasEnded());
}

TEST(HostAccess, ClipsLimitsToTheDeadline) {
    ConnectionOptions options;
    options.deadline = 5s;
    HostAccess access(options);
    EXPECT_LE(access.Clipped(300s), 5000U);
    EXPECT_EQ(access.Clipped(1ms), 1U);
    EXPECT_FALSE(access.HasEnded());
}

TEST(HostAccess, EndsAtTheDeadline) {
    ConnectionOptions options;
    options.deadline = 0s;
    HostAccess access(options);
    EXPECT_EQ(access.Ending()->kind, FailureKind::kDeadline);
    EXPECT_EQ(access.Clipped(300s), 0U);
    access.NoteFailedRequest(Of(FailureKind::kTimedOut));
    EXPECT_EQ(access.TakeFailures().failures.at(0).kind, FailureKind::kDeadline);
}

TEST(HostAccess, SurvivesLimitsThatNoClockCanHold) {
    ConnectionOptions options;
    options.deadline = std::chrono::milliseconds::max();
    options.connect_pause = std::chrono::milliseconds::max();
    options.cancel = CancelHandle::Make();
    HostAccess access(options);
    EXPECT_FALSE(access.HasEnded());
    options.cancel.Cancel();
    access.Pause();
}

TEST(HostAccess, HasEndedWithANegativeDeadline) {
    // In the clock's nanoseconds, the second would be far in the future.
    for (const auto deadline : {-1ms, -13'835'058'055'282ms, std::chrono::milliseconds::min()}) {
        ConnectionOptions options;
        options.deadline = deadline;
        EXPECT_TRUE(HostAccess(options).HasEnded()) << deadline.count();
    }
}

TEST(HostAccess, PausesBySleepUnlessThereIsAHandle) {
    HostAccess().Pause();
    HostAccess(ConnectionOptions()).Pause();
    EXPECT_THAT(TakePauses(), ElementsAre(10000, 10000));
    ConnectionOptions options;
    options.cancel = CancelHandle::Make();
    options.connect_pause = 0s;
    HostAccess(options).Pause();
    EXPECT_THAT(TakePauses(), IsEmpty());
}

}  // namespace
