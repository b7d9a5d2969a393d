// Stands before our client's header of this name: String as an installed client has it, with the
// units that its callers can overwrite. Declarations alone: nothing is linked.
#pragma once

#include <cstddef>
#include <string_view>

#include "Pegasus/Common/Shared.h"

PEGASUS_NAMESPACE_BEGIN

class Char16 {
public:
    Char16();
};

class CString {
public:
    operator const char*() const;
};

class String {
public:
    static const String EMPTY;

    String();
    String(const char* str);
    String(const String& str);
    ~String();
    String& operator=(const String& str);
    Uint32 size() const;
    Char16& operator[](Uint32 index);
    CString getCString() const;

    /// For the other headers, which are our client's.
    std::string_view utf8() const;
};

String operator+(const String& s1, const String& s2);

PEGASUS_NAMESPACE_END
