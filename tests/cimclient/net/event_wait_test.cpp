#include "net/event_wait.h"

#include <gtest/gtest.h>

#include <boost/asio/post.hpp>

namespace {

using cimclient::EventWait;

TEST(EventWait, LeavesNoHandlerBehindWhenACancellationStopsIt) {
    boost::asio::io_context io{1};
    Zentar::Cancellation cancellation;
    EventWait wait(io, &cancellation);
    bool is_done = false;
    boost::asio::post(io, [&cancellation] { cancellation.Cancel(); });
    boost::asio::post(io, [&is_done] { is_done = true; });
    wait.Drain([&is_done] { return is_done; });
    EXPECT_TRUE(is_done);
    EXPECT_EQ(io.poll(), 0U);
}

}  // namespace
