// The one loop in which this client waits for its operations.
#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/system/error_code.hpp>
#include <functional>
#include <optional>

#include "common/cancel/cancellation.h"
#include "net/limit.h"

namespace cimclient {

enum class WaitEnd { kDone, kTimedOut, kCancelled };

/// Runs operations of an io_context on the caller's thread, one at a time.
class EventWait {
public:
    /// The io_context must outlive this object; nobody else runs it.
    EventWait(boost::asio::io_context& io, Zentar::Cancellation* cancellation)
        : io_(io), waker_(cancellation, [&io] { io.stop(); }) {}

    /// Runs until `is_done`, or to the limit. An operation that is not done is still under way.
    template <class IsDone>
    WaitEnd Until(IsDone is_done, const Limit& limit) {
        io_.restart();  // before the test: a cancellation from here on stops it again
        while (!is_done()) {
            if (limit.IsCancelled()) {
                return WaitEnd::kCancelled;
            }
            io_.run_one_until(limit.deadline);
            // A host that sends without a pause keeps run_one_until from looking at the time.
            if (limit.IsPast() && !is_done()) {
                return WaitEnd::kTimedOut;
            }
        }
        return WaitEnd::kDone;
    }

    /// Runs what is ready now, at most `most` steps. True when nothing was ready any more.
    bool Poll(int most) {
        io_.restart();
        for (int i = 0; i < most; ++i) {
            if (io_.poll_one() == 0) {
                return true;
            }
        }
        return false;
    }

    /// Runs to their ends the operations whose sockets have been closed. A cancellation that comes
    /// meanwhile stops it, but must leave no handler of `is_done` to a later call.
    template <class IsDone>
    void Drain(IsDone is_done) {
        do {
            io_.restart();
            io_.run();
        } while (!is_done());
    }

private:
    boost::asio::io_context& io_;
    const Zentar::Cancellation::Waker waker_;
};

}  // namespace cimclient
