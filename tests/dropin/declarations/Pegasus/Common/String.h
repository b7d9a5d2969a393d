#pragma once

#include <Pegasus/Common/Char16.h>

#include <iostream>

namespace Pegasus {

class CString {
public:
    CString();
    CString(const CString&);
    ~CString();
    CString& operator=(const CString&);
    operator const char*() const;

private:
    CString(char*);
};

class String {
public:
    static const String EMPTY;
    String();
    String(const String& str);
    String(const String& str, Uint32 n);
    String(const Char16* str);
    String(const Char16* str, Uint32 n);
    String(const char* str);
    String(const char* str, Uint32 n);
    ~String();
    String& operator=(const String& str);
    String& assign(const String&);
    String& assign(const char*);
    String& assign(const char*, Uint32 n);
    String& assign(const Char16*);
    String& assign(const Char16*, Uint32 n);
    void clear();
    void reserveCapacity(Uint32 capacity);
    Uint32 size() const;
    const Char16* getChar16Data() const;
    CString getCString() const;
    Char16& operator[](Uint32 index);
    const Char16 operator[](Uint32 index) const;
    String& append(const Char16& c);
    String& append(const Char16* str, Uint32 n);
    String& append(const String& str);
    void remove(Uint32 index, Uint32 size = PEG_NOT_FOUND);
    String subString(Uint32 index, Uint32 n = PEG_NOT_FOUND) const;
    Uint32 find(Char16 c) const;
    Uint32 find(Uint32 index, Char16 c) const;
    Uint32 find(const String& s) const;
    Uint32 reverseFind(Char16 c) const;
    void toLower();
    void appendPrintf(const char* format, ...);
    static int compare(const String& s1, const String& s2, Uint32 n);
    static int compare(const String& s1, const String& s2);
    static int compareNoCase(const String& s1, const String& s2);
    static Boolean equal(const String& s1, const String& s2);
    static Boolean equalNoCase(const String& s1, const String& s2);
};
Boolean operator==(const String&, const String&);
Boolean operator==(const String&, const char*);
Boolean operator==(const char*, const String&);
Boolean operator!=(const String&, const String&);
Boolean operator<(const String&, const String&);
Boolean operator<=(const String&, const String&);
Boolean operator>(const String&, const String&);
Boolean operator>=(const String&, const String&);
String operator+(const String&, const String&);
std::ostream& operator<<(std::ostream& os, const String& str);

}  // namespace Pegasus
