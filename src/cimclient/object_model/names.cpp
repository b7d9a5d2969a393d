#include <algorithm>

#include "Pegasus/Common/CIMName.h"
#include "ascii.h"

namespace Pegasus::kalvex {

namespace {

bool StartsName(char c) {
    return cimclient::IsLetter(c) || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

bool ContinuesName(char c) { return StartsName(c) || cimclient::IsDigit(c); }

/// Letters beyond ASCII reach up to U+FFEF: no further planes and none of the specials.
bool HasForbiddenLetter(std::string_view name) {
    for (std::size_t i = 0; i < name.size(); ++i) {
        const auto byte = static_cast<unsigned char>(name[i]);
        if (byte >= 0xF0 || (byte == 0xEF && name.substr(i, 2) == "\xEF\xBF" &&
                             static_cast<unsigned char>(name[i + 2]) > 0xAF)) {
            return true;
        }
    }
    return false;
}

bool IsLegalName(std::string_view name) {
    return !name.empty() && StartsName(name[0]) &&
           std::all_of(name.begin() + 1, name.end(), ContinuesName) && !HasForbiddenLetter(name);
}

String WithoutLeadingSlash(const String& name) {
    const std::string_view text = name.utf8();
    return !text.empty() && text[0] == '/' ? String::FromUtf8(text.substr(1)) : name;
}

}  // namespace

CIMName::CIMName(const String& name) : name_(name) {
    if (!legal(name)) {
        throw InvalidNameException(name);
    }
}

CIMName::CIMName(const char* name) : CIMName(String(name)) {}

CIMName& CIMName::operator=(const String& name) { return *this = CIMName(name); }

CIMName& CIMName::operator=(const char* name) { return *this = CIMName(name); }

Boolean CIMName::equal(const char* name) const { return String::equalNoCase(name_, String(name)); }

Boolean CIMName::legal(const String& name) { return IsLegalName(name.utf8()); }

CIMName CIMName::Unchecked(const String& name) {
    CIMName unchecked;
    unchecked.name_ = name;
    return unchecked;
}

Boolean operator==(const CIMName& name1, const char* name2) { return name1.equal(name2); }
Boolean operator==(const char* name1, const CIMName& name2) { return name2.equal(name1); }
Boolean operator!=(const CIMName& name1, const char* name2) { return !name1.equal(name2); }
Boolean operator!=(const char* name1, const CIMName& name2) { return !name2.equal(name1); }

CIMNamespaceName::CIMNamespaceName(const String& name) : name_(WithoutLeadingSlash(name)) {
    if (!legal(name)) {
        throw InvalidNamespaceNameException(name);
    }
}

CIMNamespaceName::CIMNamespaceName(const char* name) : CIMNamespaceName(String(name)) {}

CIMNamespaceName& CIMNamespaceName::operator=(const String& name) {
    return *this = CIMNamespaceName(name);
}

CIMNamespaceName& CIMNamespaceName::operator=(const char* name) {
    return *this = CIMNamespaceName(name);
}

Boolean CIMNamespaceName::equal(const char* name) const {
    return String::equalNoCase(name_, String(name));
}

Boolean CIMNamespaceName::legal(const String& name) {
    const String stripped = WithoutLeadingSlash(name);
    std::string_view rest = stripped.utf8();
    while (true) {
        const std::size_t slash = rest.find('/');
        if (!IsLegalName(rest.substr(0, slash))) {
            return false;
        }
        if (slash == std::string_view::npos) {
            return true;
        }
        rest.remove_prefix(slash + 1);
    }
}

Boolean operator==(const CIMNamespaceName& name1, const char* name2) { return name1.equal(name2); }
Boolean operator==(const char* name1, const CIMNamespaceName& name2) { return name2.equal(name1); }
Boolean operator!=(const CIMNamespaceName& name1, const char* name2) { return !name1.equal(name2); }
Boolean operator!=(const char* name1, const CIMNamespaceName& name2) { return !name2.equal(name1); }

}  // namespace Pegasus::kalvex
