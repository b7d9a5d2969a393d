// Texts that are measured before they are made, so that they take the memory they need and no more.
#pragma once

#include <cstddef>
#include <string_view>

#include "Pegasus/Common/String.h"

namespace Pegasus::kalvex::detail {

/// Counts the bytes that it is given, and writes them to memory, if any, of which there must be
/// enough.
class TextSink {
public:
    explicit TextSink(char* to = nullptr) : to_(to) {}
    void Append(std::string_view text) {
        if (to_ != nullptr) {
            text.copy(to_ + bytes_, text.size());
        }
        bytes_ += text.size();
    }
    std::size_t bytes() const { return bytes_; }

private:
    char* to_;
    std::size_t bytes_ = 0;
};

/// The text that `append` gives to a sink. It is called twice and must do the same both times.
template <class AppendTo>
String MakeText(AppendTo append) {
    TextSink length;
    append(length);
    char* bytes = nullptr;
    String text = String::OfBytes(length.bytes(), bytes);
    TextSink writer(bytes);
    append(writer);
    return text;
}

}  // namespace Pegasus::kalvex::detail
