// Bytes that come and go.
#pragma once

#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>

namespace cimclient {

/// Bytes that are added at the end and taken away at the front. A large buffer grows by remapping
/// its pages, so that neither time nor memory is spent on a second copy.
class ByteBuffer {
public:
    void Append(std::string_view part) {
        if (part.empty()) {
            return;
        }
        if (part.size() > capacity_ - size_) {
            Grow(size_ + part.size());
        }
        std::memcpy(bytes_.get() + size_, part.data(), part.size());
        size_ += part.size();
    }
    void RemovePrefix(std::size_t count) {
        size_ -= count;
        if (size_ > 0) {
            std::memmove(bytes_.get(), bytes_.get() + count, size_);
        }
    }
    std::string_view View() const { return {bytes_.get(), size_}; }

private:
    struct Free {
        void operator()(char* bytes) const { std::free(bytes); }
    };

    void Grow(std::size_t needed) {
        constexpr std::size_t kFirst = 4096;
        std::size_t capacity = capacity_ == 0 ? kFirst : capacity_;
        while (capacity < needed) {
            capacity *= 2;
        }
        void* grown = std::realloc(bytes_.get(), capacity);
        if (grown == nullptr) {
            throw std::bad_alloc();
        }
        static_cast<void>(bytes_.release());  // realloc() has freed it
        bytes_.reset(static_cast<char*>(grown));
        capacity_ = capacity;
    }

    std::unique_ptr<char, Free> bytes_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

}  // namespace cimclient
