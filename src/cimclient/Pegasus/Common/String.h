// Text of the CIM client API, kept as UTF-8.
#pragma once

#include <string_view>

#include "Pegasus/Common/Shared.h"

PEGASUS_NAMESPACE_BEGIN

namespace detail {

/// The text of a String: this head, the UTF-8 bytes and a 0 in one allocation.
struct StringBody : Counted {
    char* Bytes() { return reinterpret_cast<char*>(this + 1); }

    Uint32 size = 0;
};

}  // namespace detail

/// UTF-8 bytes that live as long as this object.
class CString {
public:
    operator const char*() const { return body_ ? body_->Bytes() : ""; }

private:
    friend class String;
    explicit CString(detail::Shared<detail::StringBody> body) : body_(std::move(body)) {}
    detail::Shared<detail::StringBody> body_;
};

/// A value: copies share their text. Construction from bytes that are not UTF-8, or from a null
/// pointer, throws Exception.
class String {
public:
    static const String EMPTY;

    String() = default;
    String(const char* str);

    CString getCString() const { return CString(body_); }

    /// For the client's own rooms: the UTF-8 bytes, and a string of bytes known to be UTF-8.
    std::string_view utf8() const {
        return body_ ? std::string_view(body_->Bytes(), body_->size) : std::string_view();
    }
    static String FromUtf8(std::string_view valid_utf8);
    /// The caller writes that many bytes of UTF-8 to `bytes` at once; null for 0.
    static String OfBytes(std::size_t size, char*& bytes);

private:
    detail::Shared<detail::StringBody> body_;  ///< null when empty
};

String operator+(const String& s1, const String& s2);

PEGASUS_NAMESPACE_END
