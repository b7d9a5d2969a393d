#include "support/failing_memory.h"

#include <new>

namespace support {

namespace {

thread_local bool fail_nothrow = false;
thread_local unsigned long fail_size = 0;

}  // namespace

void FailNextNothrowNew() { fail_nothrow = true; }

void FailNextNewOfAtLeast(unsigned long size) { fail_size = size; }

}  // namespace support

// The linker's option --wrap puts these before operator new. Replacing the operator itself would
// leave sanitizers without theirs.
extern "C" {

void* __real__Znwm(std::size_t size);
void* __real__ZnwmRKSt9nothrow_t(std::size_t size, const std::nothrow_t& tag) noexcept;

void* __wrap__Znwm(std::size_t size) {
    if (support::fail_size != 0 && size >= support::fail_size) {
        support::fail_size = 0;
        throw std::bad_alloc();
    }
    return __real__Znwm(size);
}

void* __wrap__ZnwmRKSt9nothrow_t(std::size_t size, const std::nothrow_t& tag) noexcept {
    if (support::fail_nothrow) {
        support::fail_nothrow = false;
        return nullptr;
    }
    return __real__ZnwmRKSt9nothrow_t(size, tag);
}

}  // extern "C"
