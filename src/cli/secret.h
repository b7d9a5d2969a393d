// A password in memory, and not longer than it is needed.
#pragma once

#include <string>
#include <string_view>

namespace command {

/// Overwrites the bytes, also where the compiler sees no further use of them.
void Wipe(char* bytes, std::size_t count);

/// A text that is overwritten when it is destroyed. It has its full capacity from the start, so
/// that growing leaves no copies.
class Secret {
public:
    static constexpr std::size_t kCapacity = 65536;

    Secret();
    /// Copies `text`, which fits into the capacity.
    explicit Secret(std::string_view text);
    ~Secret();
    Secret(Secret&& other) noexcept;
    Secret& operator=(Secret&& other) noexcept;

    /// Appends what the descriptor still has to give: up to its end, or up to a line break when
    /// `one_line`. False, with errno, on failure; E2BIG when it is more than the capacity.
    bool ReadFrom(int descriptor, bool one_line);
    /// Drops one line break, "\n" or "\r\n", from the end.
    void DropLineBreak();

    const std::string& text() const { return text_; }

private:
    std::string text_;
};

}  // namespace command
