// Bytes looked at eight at a time.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

/// Functions that mark bytes of a word set the byte's highest bit. Bytes after the first that is
/// marked may be marked wrongly.
namespace Zentar::byte_words {

constexpr std::uint64_t kLowBits = 0x0101010101010101;
constexpr std::uint64_t kHighBits = kLowBits << 7;

inline std::uint64_t WordAt(const char* bytes) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return std::endian::native == std::endian::little ? word : __builtin_bswap64(word);
}

/// Bytes that equal `wanted`, which is ASCII, or are none.
constexpr std::uint64_t Equal(std::uint64_t word, char wanted) {
    return ((word ^ (kLowBits * static_cast<unsigned char>(wanted))) - kLowBits) & kHighBits;
}

/// Blanks, control characters, and what is not ASCII.
constexpr std::uint64_t NotGraphic(std::uint64_t word) {
    return ((word - kLowBits * 0x21) | word) & kHighBits;
}

/// What is not ASCII.
constexpr std::uint64_t NotAscii(std::uint64_t word) { return word & kHighBits; }

/// All but the capital letters of ASCII.
constexpr std::uint64_t NotCapital(std::uint64_t word) {
    const std::uint64_t from_a = word + kLowBits * (0x80 - 'A');
    const std::uint64_t after_z = word + kLowBits * (0x7f - 'Z');
    return (~from_a | after_z | word) & kHighBits;
}

/// The first byte that `mark` marks; `end` or one of the last seven bytes without any.
template <class Mark>
inline const char* FirstMarked(const char* begin, const char* end, Mark mark) {
    for (; end - begin >= 8; begin += 8) {
        if (const std::uint64_t marks = mark(WordAt(begin)); marks != 0) {
            return begin + std::countr_zero(marks) / 8;
        }
    }
    return begin;
}

/// Whether `size` bytes are the same.
inline bool SameBytes(const char* a, const char* b, std::size_t size) {
    if (size < sizeof(std::uint64_t)) {
        for (std::size_t i = 0; i < size; ++i) {
            if (a[i] != b[i]) {
                return false;
            }
        }
        return true;
    }
    // The last word overlaps the one before it.
    const std::size_t last = size - sizeof(std::uint64_t);
    for (std::size_t i = 0; i < last; i += sizeof(std::uint64_t)) {
        if (WordAt(a + i) != WordAt(b + i)) {
            return false;
        }
    }
    return WordAt(a + last) == WordAt(b + last);
}

/// Two texts, most of which have the same length and are short.
inline bool SameBytes(std::string_view a, std::string_view b) {
    return a.size() == b.size() && SameBytes(a.data(), b.data(), a.size());
}

}  // namespace Zentar::byte_words
