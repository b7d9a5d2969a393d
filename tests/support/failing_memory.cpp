#include "support/failing_memory.h"

#include <utility>

namespace support {

namespace {

thread_local bool fail_nothrow = false;
thread_local unsigned long fail_size = 0;
thread_local bool counting = false;
thread_local bool has_failed = false;
thread_local unsigned long passing_left = 0;

bool IsToFail(unsigned long size) {
    if (fail_size != 0 && size >= fail_size) {
        fail_size = 0;
        return true;
    }
    if (!counting || passing_left-- > 0) {
        return false;
    }
    counting = false;
    has_failed = true;
    return true;
}

}  // namespace

void FailNextNothrowNew() { fail_nothrow = true; }

void FailNextNewOfAtLeast(unsigned long size) { fail_size = size; }

void FailNewAfter(unsigned long passing) {
    passing_left = passing;
    counting = true;
    has_failed = false;
}

bool NewHasFailed() {
    counting = false;
    return std::exchange(has_failed, false);
}

}  // namespace support

// The linker's option --wrap puts these before operator new. Replacing the operator itself would
// leave sanitizers without theirs.
extern "C" {

void* __real__Znwm(std::size_t size);
void* __real_aligned_alloc(std::size_t alignment, std::size_t size);
void* __real__ZnwmRKSt9nothrow_t(std::size_t size, const std::nothrow_t& tag) noexcept;

void* __wrap__Znwm(std::size_t size) {
    if (support::IsToFail(size)) {
        throw std::bad_alloc();
    }
    return __real__Znwm(size);
}

/// Boost.Asio's way, which throws when it gets nothing.
void* __wrap_aligned_alloc(std::size_t alignment, std::size_t size) {
    return support::IsToFail(size) ? nullptr : __real_aligned_alloc(alignment, size);
}

void* __wrap__ZnwmRKSt9nothrow_t(std::size_t size, const std::nothrow_t& tag) noexcept {
    if (support::fail_nothrow) {
        support::fail_nothrow = false;
        return nullptr;
    }
    return __real__ZnwmRKSt9nothrow_t(size, tag);
}

}  // extern "C"
