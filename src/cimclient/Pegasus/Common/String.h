// Text of the CIM client API, kept as UTF-8.
#pragma once

#include <string_view>

#include "Pegasus/Common/Shared.h"

PEGASUS_NAMESPACE_BEGIN

namespace detail {
struct StringBody;
}

/// UTF-8 bytes that live as long as this object.
class CString {
public:
    ~CString();
    operator const char*() const;

private:
    friend class String;
    explicit CString(detail::Shared<detail::StringBody> body);
    detail::Shared<detail::StringBody> body_;
};

/// A value: copies share their text. Construction from bytes that are not UTF-8, or from a null
/// pointer, throws Exception.
class String {
public:
    static const String EMPTY;

    String();
    String(const char* str);
    String(const String& str);
    String(String&& str) noexcept;
    ~String();
    String& operator=(const String& str);
    String& operator=(String&& str) noexcept;

    CString getCString() const;

    /// For the client's own rooms: the UTF-8 bytes, and a string of bytes known to be UTF-8.
    std::string_view utf8() const;
    static String FromUtf8(std::string_view valid_utf8);
    /// The caller writes that many bytes of UTF-8 to `bytes` at once; null for 0.
    static String OfBytes(std::size_t size, char*& bytes);

private:
    detail::Shared<detail::StringBody> body_;  ///< null when empty
};

String operator+(const String& s1, const String& s2);

PEGASUS_NAMESPACE_END
