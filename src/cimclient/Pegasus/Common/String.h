// Text of the CIM client API: UTF-16 to its users, kept as UTF-8.
#pragma once

#include <iostream>
#include <string>
#include <string_view>

#include "Pegasus/Common/Char16.h"
#include "Pegasus/Common/Shared.h"

PEGASUS_NAMESPACE_BEGIN

namespace detail {
struct StringBody;
}

/// UTF-8 bytes that live as long as this object. A default object converts to a null pointer.
class CString {
public:
    CString();
    CString(const CString&);
    CString(CString&&) noexcept;
    ~CString();
    CString& operator=(const CString&);
    operator const char*() const;

private:
    friend class String;
    explicit CString(detail::Shared<detail::StringBody> body);
    detail::Shared<detail::StringBody> body_;
};

/// A value: copies share their text until one of them changes. `size` and all positions count
/// UTF-16 units. Construction from bytes that are not UTF-8 throws Exception.
class String {
public:
    static const String EMPTY;

    String();
    String(const String& str);
    String(String&& str) noexcept;
    String(const String& str, Uint32 n);
    String(const Char16* str);
    String(const Char16* str, Uint32 n);
    String(const char* str);
    String(const char* str, Uint32 n);
    String(const String& s1, const String& s2);
    ~String();

    String& operator=(const String& str);
    String& operator=(String&& str) noexcept;
    String& operator=(const char* str);
    String& assign(const String& str);
    String& assign(const char* str);
    String& assign(const char* str, Uint32 n);
    String& assign(const Char16* str);
    String& assign(const Char16* str, Uint32 n);
    void clear();
    void reserveCapacity(Uint32 capacity);

    Uint32 size() const;
    /// Valid until the string changes; ends with a 0 unit.
    const Char16* getChar16Data() const;
    CString getCString() const;

    /// Position `size()` gives 0; beyond it IndexOutOfBoundsException.
    Char16& operator[](Uint32 index);
    const Char16 operator[](Uint32 index) const;

    String& append(const Char16& c);
    String& append(const Char16* str, Uint32 n);
    String& append(const String& str);
    String& append(const char* str);
    String& append(const char* str, Uint32 n);
    void remove(Uint32 index, Uint32 size = PEG_NOT_FOUND);
    String subString(Uint32 index, Uint32 n = PEG_NOT_FOUND) const;

    /// Positions, or PEG_NOT_FOUND.
    Uint32 find(Char16 c) const;
    Uint32 find(Uint32 index, Char16 c) const;
    Uint32 find(const String& s) const;
    Uint32 find(const char* s) const;
    Uint32 reverseFind(Char16 c) const;

    void toLower();
    void toUpper();
    void appendPrintf(const char* format, ...);

    /// -1, 0 or 1.
    static int compare(const String& s1, const String& s2, Uint32 n);
    static int compare(const String& s1, const String& s2);
    static int compareNoCase(const String& s1, const String& s2);
    static Boolean equal(const String& s1, const String& s2);
    static Boolean equalNoCase(const String& s1, const String& s2);

    /// For the client's own rooms: the UTF-8 bytes, and a string of bytes known to be UTF-8.
    std::string_view utf8() const;
    static String FromUtf8(std::string_view valid_utf8);

private:
    detail::StringBody& Editable();
    detail::Shared<detail::StringBody> body_;  ///< null when empty
};

inline Boolean operator==(const String& s1, const String& s2) { return String::equal(s1, s2); }
Boolean operator==(const String& s1, const char* s2);
Boolean operator==(const char* s1, const String& s2);
Boolean operator!=(const String& s1, const String& s2);
Boolean operator!=(const String& s1, const char* s2);
Boolean operator!=(const char* s1, const String& s2);
Boolean operator<(const String& s1, const String& s2);
Boolean operator<=(const String& s1, const String& s2);
Boolean operator>(const String& s1, const String& s2);
Boolean operator>=(const String& s1, const String& s2);
String operator+(const String& s1, const String& s2);
String operator+(const String& s1, const char* s2);
String operator+(const char* s1, const String& s2);
/// Latin-1: units below 256 as one byte, others as \xNNNN. Use getCString for UTF-8.
std::ostream& operator<<(std::ostream& os, const String& str);

PEGASUS_NAMESPACE_END
