// Looks for a secret in this process's own memory.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace fault {

/// A text that is looked for, and that the search itself must not put into memory. It is masked by
/// the compiler and unmasked one character at a time.
class MaskedText {
public:
    static constexpr std::size_t kCapacity = 64;

    template <std::size_t size>
    explicit consteval MaskedText(const char (&text)[size]) : size_(size - 1) {
        static_assert(size <= kCapacity);
        for (std::size_t i = 0; i < size_; ++i) {
            masked_[i] = static_cast<char>(text[i] ^ kMask);
        }
    }

    std::size_t size() const { return size_; }
    char operator[](std::size_t i) const { return static_cast<char>(masked_[i] ^ kMask); }
    bool IsAt(const char* bytes) const;

private:
    static constexpr char kMask = 0x55;
    std::array<char, kCapacity> masked_{};
    std::size_t size_;
};

/// Where the text stands in the private memory that this process can write to: its heap, stacks and
/// variables, what has been freed included. Allocates nothing as long as it finds nothing.
std::vector<std::string> PlacesInMemory(const MaskedText& text);

}  // namespace fault
