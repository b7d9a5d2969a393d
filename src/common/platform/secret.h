// Secrets in memory, and not longer than they are needed.
#pragma once

#include <string.h>

#include <algorithm>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

namespace Zentar {

/// Overwrites the bytes, also where the compiler sees no further use of them.
inline void Wipe(char* bytes, std::size_t count) { explicit_bzero(bytes, count); }

/// Empties the text and overwrites all the memory it has.
inline void Wipe(std::string& text) {
    text.resize(text.capacity());
    Wipe(text.data(), text.size());
    text.clear();
}

/// A text that is overwritten when it is destroyed or replaced. Neither moving nor growing leaves a
/// copy.
class Secret {
public:
    Secret() = default;
    explicit Secret(std::string_view text) : text_(text) {}
    /// The parts one after the other.
    Secret(std::initializer_list<std::string_view> parts) {
        std::size_t size = 0;
        for (const std::string_view part : parts) {
            size += part.size();
        }
        text_.reserve(size);
        for (const std::string_view part : parts) {
            text_ += part;
        }
    }
    ~Secret() { Wipe(text_); }
    Secret(Secret&& other) noexcept : text_(std::move(other.text_)) { Wipe(other.text_); }
    Secret& operator=(Secret&& other) noexcept {
        Wipe(text_);
        text_ = std::move(other.text_);
        Wipe(other.text_);
        return *this;
    }

    /// New bytes are zeros.
    void Resize(std::size_t size) {
        Reserve(size);
        text_.resize(size);
    }

    const std::string& text() const { return text_; }
    /// `text().size()` bytes, to be written to.
    char* data() { return text_.data(); }

private:
    void Reserve(std::size_t size) {
        if (size > text_.capacity()) {
            std::string larger;
            larger.reserve(std::max(size, 2 * text_.capacity()));
            larger = text_;
            Wipe(text_);
            text_.swap(larger);
        }
    }

    std::string text_;
};

}  // namespace Zentar
