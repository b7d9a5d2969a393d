#include "support/failing_memory.h"

#include <cstdlib>
#include <new>

namespace support {

namespace {

thread_local bool fail_nothrow = false;
thread_local unsigned long fail_size = 0;

void* Allocate(std::size_t size) {
    if (void* memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}

}  // namespace

void FailNextNothrowNew() { fail_nothrow = true; }

void FailNextNewOfAtLeast(unsigned long size) { fail_size = size; }

}  // namespace support

void* operator new(std::size_t size) {
    if (support::fail_size != 0 && size >= support::fail_size) {
        support::fail_size = 0;
        throw std::bad_alloc();
    }
    return support::Allocate(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    if (support::fail_nothrow) {
        support::fail_nothrow = false;
        return nullptr;
    }
    return std::malloc(size == 0 ? 1 : size);
}

void operator delete(void* memory) noexcept { std::free(memory); }

void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
