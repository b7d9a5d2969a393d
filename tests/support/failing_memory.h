// Makes allocations of this thread fail, in code that is linked into the test itself.
#pragma once

#include <new>

namespace support {

/// The next `operator new` that may return null (the nothrow form) does.
void FailNextNothrowNew();

/// The next `operator new` of at least `size` bytes throws std::bad_alloc.
void FailNextNewOfAtLeast(unsigned long size);

/// Lets `passing` calls of the throwing `operator new` pass; the next one throws std::bad_alloc.
/// Boost.Asio's allocations count as well.
void FailNewAfter(unsigned long passing);
/// Takes that back; true when the call has failed already.
bool NewHasFailed();

/// How many allocations were made to fail, and how many of these runs ended in std::bad_alloc.
struct FailedAllocations {
    unsigned long failed = 0;
    unsigned long thrown = 0;
};

/// Runs `action` with its first allocation failing, then with its second, and so on until none is
/// left to fail; `prepare` runs before each. After each run with a failure `check` is told whether
/// `action` has thrown.
template <class Prepare, class Action, class Check>
FailedAllocations FailEachAllocation(Prepare prepare, Action action, Check check) {
    FailedAllocations all;
    while (true) {
        prepare();
        bool threw = false;
        FailNewAfter(all.failed);
        try {
            action();
        } catch (const std::bad_alloc&) {
            threw = true;
        }
        if (!NewHasFailed()) {
            return all;
        }
        ++all.failed;
        all.thrown += threw ? 1 : 0;
        check(threw);
    }
}

template <class Action, class Check>
FailedAllocations FailEachAllocation(Action action, Check check) {
    return FailEachAllocation([] {}, action, check);
}

}  // namespace support
