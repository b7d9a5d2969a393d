// Text of the CIM client API: UTF-16 to its users, kept as UTF-8.
#pragma once

#include <string_view>

#include "Pegasus/Common/Char16.h"
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

/// A value: copies share their text until one of them changes. `size` and positions count UTF-16
/// units. Construction from bytes that are not UTF-8, or from a null pointer, throws Exception.
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

    Uint32 size() const;
    /// The units, with a 0 after them, until the text changes. Not for two threads at once.
    const Char16* getChar16Data() const;
    /// Position `size()` gives 0; beyond it IndexOutOfBoundsException.
    Char16& operator[](Uint32 index);
    CString getCString() const;

    /// For the client's own rooms: the UTF-8 bytes, and a string of bytes known to be UTF-8.
    std::string_view utf8() const;
    static String FromUtf8(std::string_view valid_utf8);
    /// The caller writes that many bytes of UTF-8 to `bytes` at once; null for 0.
    static String OfBytes(std::size_t size, char*& bytes);

private:
    detail::StringBody& Editable();
    detail::Shared<detail::StringBody> body_;  ///< null when empty
};

String operator+(const String& s1, const String& s2);

PEGASUS_NAMESPACE_END
