#include <algorithm>
#include <string>
#include <utility>

#include "Pegasus/Common/CIMObjectPath.h"
#include "ascii.h"
#include "object_model/host_names.h"
#include "object_model/path_parser.h"

namespace Pegasus::kalvex {

namespace {

bool ComesBefore(const CIMKeyBinding& x, const CIMKeyBinding& y) {
    return cimclient::CompareNoCase(x.getName().getString().utf8(),
                                    y.getName().getString().utf8()) < 0;
}

Array<CIMKeyBinding> SortedByName(Array<CIMKeyBinding> keys) {
    const CIMKeyBinding* const first = keys.size() > 0 ? &std::as_const(keys)[0] : nullptr;
    if (!std::is_sorted(first, first + keys.size(), ComesBefore)) {
        std::stable_sort(&keys[0], &keys[0] + keys.size(), ComesBefore);
    }
    return keys;
}

const String& CheckedHost(const String& host) {
    if (!host.utf8().empty() && !detail::IsPathHost(host.utf8())) {
        detail::ThrowMalformedPath(host.utf8(), "invalid hostname");
    }
    return host;
}

void AppendQuoted(std::string& out, std::string_view text) {
    out += '"';
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            out += '\\';
        }
        out += c;
    }
    out += '"';
}

}  // namespace

CIMObjectPath::CIMObjectPath(const String& objectName)
    : CIMObjectPath(detail::ParseObjectPath(objectName.utf8())) {}

CIMObjectPath::CIMObjectPath(const String& host, const CIMNamespaceName& nameSpace,
                             const CIMName& className, const Array<CIMKeyBinding>& keyBindings)
    : host_(CheckedHost(host)),
      name_space_(nameSpace),
      class_name_(className),
      keys_(SortedByName(keyBindings)) {}

String CIMObjectPath::toString() const {
    std::string text;
    if (!host_.utf8().empty()) {
        text.append("//").append(host_.utf8()).append("/");
    }
    text.append(name_space_.getString().utf8());
    if (!text.empty()) {
        text += ':';
    }
    text += class_name_.getString().utf8();
    char separator = '.';
    for (Uint32 i = 0; i < keys_.size(); ++i) {
        const CIMKeyBinding& key = keys_[i];
        text += separator;
        separator = ',';
        text.append(key.getName().getString().utf8()).append("=");
        if (key.getType() == CIMKeyBinding::STRING || key.getType() == CIMKeyBinding::REFERENCE) {
            AppendQuoted(text, key.getValue().utf8());
        } else {
            text += key.getValue().utf8();
        }
    }
    return String::FromUtf8(text);
}

}  // namespace Pegasus::kalvex
