// Reference counting for the bodies that handles and values share.
#pragma once

#include <atomic>
#include <cstddef>
#include <utility>

#include "Pegasus/Common/ArenaVector.h"

PEGASUS_NAMESPACE_BEGIN

namespace detail {

/// Base of a counted body. Counts may change on many threads at once.
struct Counted {
    Counted() = default;
    /// A copied body starts with a count of its own.
    Counted(const Counted&) noexcept {}
    Counted& operator=(const Counted&) = delete;

    static void* operator new(std::size_t size) { return ArenaAllocate(size); }
    static void operator delete(void* body) noexcept { ArenaFree(body); }

    std::atomic<Uint32> references{1};
};

/// Owns one reference to a body, or none.
template <class Body>
class Shared {
public:
    Shared() = default;
    /// Takes over the reference that a new body is born with.
    explicit Shared(Body* body) : body_(body) {}
    Shared(const Shared& other) : body_(other.body_) {
        if (body_ != nullptr) {
            body_->references.fetch_add(1, std::memory_order_relaxed);
        }
    }
    Shared(Shared&& other) noexcept : body_(std::exchange(other.body_, nullptr)) {}
    Shared& operator=(Shared other) noexcept {
        std::swap(body_, other.body_);
        return *this;
    }
    ~Shared() {
        // The only owner needs no atomic write: nobody else can add a reference.
        if (body_ != nullptr &&
            (IsUnique() || body_->references.fetch_sub(1, std::memory_order_acq_rel) == 1)) {
            delete body_;
        }
    }

    Body* get() const { return body_; }
    Body* operator->() const { return body_; }
    Body& operator*() const { return *body_; }
    explicit operator bool() const { return body_ != nullptr; }
    bool IsUnique() const { return body_->references.load(std::memory_order_acquire) == 1; }

private:
    Body* body_ = nullptr;
};

}  // namespace detail

PEGASUS_NAMESPACE_END
