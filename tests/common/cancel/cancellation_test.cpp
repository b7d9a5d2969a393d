#include "common/cancel/cancellation.h"

#include <gtest/gtest.h>

#include <thread>

#include "common/cancel/cancel_handle.h"

namespace {

using Zentar::CancelHandle;
using Zentar::Cancellation;
using namespace std::chrono_literals;

TEST(Cancellation, EndsAWait) {
    Cancellation cancellation;
    std::thread canceller([&] { cancellation.Cancel(); });
    EXPECT_FALSE(cancellation.Wait(1h));
    canceller.join();
}

TEST(Cancellation, LetsNoLaterWaitBegin) {
    Cancellation cancellation;
    cancellation.Cancel();
    EXPECT_FALSE(cancellation.Wait(1h));
    EXPECT_TRUE(cancellation.IsCancelled());
}

TEST(Cancellation, ThatDoesNotComeLetsAWaitRunToItsEnd) { EXPECT_TRUE(Cancellation().Wait(1ms)); }

TEST(Cancellation, WakesThoseThatListenAndNoOthers) {
    Cancellation cancellation;
    int first = 0;
    int second = 0;
    const Cancellation::Waker stays(&cancellation, [&] { ++first; });
    {
        const Cancellation::Waker gone(&cancellation, [&] { ++second; });
    }
    cancellation.Cancel();
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 0);
}

TEST(Cancellation, MayBeMissing) {
    bool is_woken = false;
    {
        const Cancellation::Waker waker(nullptr, [&] { is_woken = true; });
    }
    EXPECT_FALSE(is_woken);
}

TEST(CancelHandle, IsOneWithItsCopies) {
    const CancelHandle handle = CancelHandle::Make();
    const CancelHandle copy = handle;
    EXPECT_FALSE(copy.IsCancelled());
    handle.Cancel();
    EXPECT_TRUE(copy.IsCancelled());
}

TEST(CancelHandle, ThatIsEmptyIsNeverCancelled) {
    const CancelHandle empty;
    empty.Cancel();
    EXPECT_FALSE(empty.IsCancelled());
    EXPECT_FALSE(empty);
    EXPECT_TRUE(CancelHandle::Make());
}

}  // namespace
