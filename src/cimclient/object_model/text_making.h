// Texts that are measured before they are made, so that they take the memory they need and no more.
#pragma once

#include <cstddef>
#include <string_view>

#include "Pegasus/Common/String.h"

namespace Pegasus::kalvex::detail {

/// A sink that counts bytes.
class TextLength {
public:
    void Append(std::string_view text) { bytes_ += text.size(); }
    std::size_t bytes() const { return bytes_; }

private:
    std::size_t bytes_ = 0;
};

/// A sink that writes to memory, of which there must be enough.
class TextBytes {
public:
    explicit TextBytes(char* to) : to_(to) {}
    void Append(std::string_view text) { to_ += text.copy(to_, text.size()); }

private:
    char* to_;
};

/// The text that `append` gives to a sink. It is called twice and must do the same both times.
template <class AppendTo>
String MakeText(AppendTo append) {
    TextLength length;
    append(length);
    char* bytes = nullptr;
    String text = String::OfBytes(length.bytes(), bytes);
    if (bytes != nullptr) {
        TextBytes writer(bytes);
        append(writer);
    }
    return text;
}

}  // namespace Pegasus::kalvex::detail
