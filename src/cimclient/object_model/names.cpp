#include "object_model/names.h"

#include <algorithm>

#include "Pegasus/Common/CIMName.h"
#include "Pegasus/Common/Exception.h"
#include "common/text/ascii.h"

namespace Pegasus::kalvex {

namespace detail {

namespace {

bool StartsName(char c) {
    return Zentar::IsLetter(c) || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

bool ContinuesName(char c) { return StartsName(c) || Zentar::IsDigit(c); }

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

}  // namespace

bool IsLegalName(std::string_view name) {
    return !name.empty() && StartsName(name[0]) &&
           std::all_of(name.begin() + 1, name.end(), ContinuesName) && !HasForbiddenLetter(name);
}

bool IsLegalNamespace(std::string_view name) {
    while (true) {
        const std::size_t slash = name.find('/');
        if (!IsLegalName(name.substr(0, slash))) {
            return false;
        }
        if (slash == std::string_view::npos) {
            return true;
        }
        name.remove_prefix(slash + 1);
    }
}

}  // namespace detail

namespace {

String WithoutLeadingSlash(const String& name) {
    const std::string_view text = name.utf8();
    return text.starts_with('/') ? String::FromUtf8(text.substr(1)) : name;
}

}  // namespace

CIMName::CIMName(const String& name) : name_(name) {
    if (!detail::IsLegalName(name.utf8())) {
        throw InvalidNameException(name);
    }
}

CIMName::CIMName(const char* name) : CIMName(String(name)) {}

CIMName CIMName::Unchecked(const String& name) {
    CIMName unchecked;
    unchecked.name_ = name;
    return unchecked;
}

Boolean operator==(const CIMName& name1, const CIMName& name2) {
    return Zentar::EqualNoCase(name1.getString().utf8(), name2.getString().utf8());
}

CIMNamespaceName::CIMNamespaceName(const String& name) : name_(WithoutLeadingSlash(name)) {
    if (!detail::IsLegalNamespace(name_.utf8())) {
        throw InvalidNamespaceNameException(name);
    }
}

CIMNamespaceName::CIMNamespaceName(const char* name) : CIMNamespaceName(String(name)) {}

}  // namespace Pegasus::kalvex
