#include "Pegasus/Common/String.h"

#include <cstdio>
#include <new>
#include <string>

#include "Pegasus/Common/Exception.h"
#include "common/text/utf8.h"

namespace Pegasus::kalvex {

namespace {

using detail::Shared;
using detail::StringBody;

/// With a 0 after the bytes, which are still to be written.
Shared<StringBody> BodyOfSize(std::size_t size) {
    constexpr std::size_t kMaxBytes = 0x7FFFFFFF;
    if (size > kMaxBytes) {
        throw std::bad_alloc();
    }
    auto* body = ::new (detail::ArenaAllocate(sizeof(StringBody) + size + 1)) StringBody;
    body->size = static_cast<Uint32>(size);
    body->Bytes()[size] = '\0';
    return Shared<StringBody>(body);
}

Shared<StringBody> BodyUnlessEmpty(std::string_view text) {
    Shared<StringBody> body;
    if (!text.empty()) {
        body = BodyOfSize(text.size());
        text.copy(body->Bytes(), text.size());
    }
    return body;
}

[[noreturn]] void ThrowInvalidUtf8(std::string_view text, std::size_t at) {
    std::string message = "The byte sequence starting at index " + std::to_string(at) +
                          " is not valid UTF-8 encoding: ";
    message += text.substr(0, at);
    for (const char c : text.substr(at, 10)) {
        char escape[8];
        std::snprintf(escape, sizeof escape, " 0x%02X", static_cast<unsigned char>(c));
        message += escape;
    }
    throw Exception(String::FromUtf8(message));
}

std::string_view Checked(const char* text) {
    if (text == nullptr) {
        throw Exception("null pointer");
    }
    const std::size_t invalid = Zentar::FirstInvalidUtf8(text);
    if (invalid != std::string_view::npos) {
        ThrowInvalidUtf8(text, invalid);
    }
    return text;
}

}  // namespace

const String String::EMPTY;

String::String(const char* str) : body_(BodyUnlessEmpty(Checked(str))) {}

String String::FromUtf8(std::string_view valid_utf8) {
    String string;
    string.body_ = BodyUnlessEmpty(valid_utf8);
    return string;
}

String String::OfBytes(std::size_t size, char*& bytes) {
    String string;
    if (size > 0) {
        string.body_ = BodyOfSize(size);
        bytes = string.body_->Bytes();
    }
    return string;
}

String operator+(const String& s1, const String& s2) {
    return String::FromUtf8(std::string(s1.utf8()).append(s2.utf8()));
}

}  // namespace Pegasus::kalvex
