#include <algorithm>
#include <string>
#include <vector>

#include "Pegasus/Common/CIMObject.h"
#include "Pegasus/Common/CIMObjectPath.h"
#include "Pegasus/Common/CIMValue.h"
#include "object_model/host_names.h"
#include "object_model/path_parser.h"
#include "object_model/value_texts.h"

namespace Pegasus::kalvex {

namespace {

CIMKeyBinding::Type KeyTypeOf(CIMType type) {
    switch (type) {
        case CIMTYPE_BOOLEAN:
            return CIMKeyBinding::BOOLEAN;
        case CIMTYPE_CHAR16:
        case CIMTYPE_STRING:
        case CIMTYPE_DATETIME:
            return CIMKeyBinding::STRING;
        case CIMTYPE_REFERENCE:
            return CIMKeyBinding::REFERENCE;
        default:
            return CIMKeyBinding::NUMERIC;
    }
}

Array<CIMKeyBinding> SortedByName(const Array<CIMKeyBinding>& keys) {
    const auto comes_before = [](const CIMKeyBinding& x, const CIMKeyBinding& y) {
        return String::compareNoCase(x.getName().getString(), y.getName().getString()) < 0;
    };
    if (std::is_sorted(keys.getData(), keys.getData() + keys.size(), comes_before)) {
        return keys;
    }
    std::vector<CIMKeyBinding> sorted(keys.getData(), keys.getData() + keys.size());
    std::stable_sort(sorted.begin(), sorted.end(), comes_before);
    return Array<CIMKeyBinding>(sorted.data(), static_cast<Uint32>(sorted.size()));
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

bool SameNumber(std::string_view x, std::string_view y) {
    const auto x_number = detail::LenientSigned(x);
    const auto y_number = detail::LenientSigned(y);
    if (x_number && y_number) {
        return *x_number == *y_number;
    }
    const auto x_unsigned = detail::LenientUnsigned(x);
    const auto y_unsigned = detail::LenientUnsigned(y);
    return x_unsigned && y_unsigned ? *x_unsigned == *y_unsigned : x == y;
}

bool SameReference(const String& x, const String& y) {
    try {
        return CIMObjectPath(x) == CIMObjectPath(y);
    } catch (const Exception&) {
        return x == y;
    }
}

bool SameKeys(const Array<CIMKeyBinding>& x, const Array<CIMKeyBinding>& y) {
    return x.size() == y.size() && std::equal(x.getData(), x.getData() + x.size(), y.getData());
}

const String kNoText;
const CIMName kNoName;
const CIMNamespaceName kNoNamespace;
const Array<CIMKeyBinding> kNoKeys;

}  // namespace

CIMKeyBinding::CIMKeyBinding(const CIMName& name, const String& value, Type type)
    : name_(name), value_(value), type_(type) {}

CIMKeyBinding::CIMKeyBinding(const CIMName& name, const CIMValue& value)
    : name_(name), type_(KeyTypeOf(value.getType())) {
    if (value.isArray() || value.getType() == CIMTYPE_OBJECT ||
        value.getType() == CIMTYPE_INSTANCE) {
        throw TypeMismatchException();
    }
    value_ = value.toString();
}

Boolean CIMKeyBinding::equal(CIMValue value) {
    try {
        return *this == CIMKeyBinding(name_, value);
    } catch (const TypeMismatchException&) {
        return false;
    }
}

Boolean operator==(const CIMKeyBinding& x, const CIMKeyBinding& y) {
    if (x.getName() != y.getName() || x.getType() != y.getType()) {
        return false;
    }
    switch (x.getType()) {
        case CIMKeyBinding::BOOLEAN:
            return String::equalNoCase(x.getValue(), y.getValue());
        case CIMKeyBinding::NUMERIC:
            return SameNumber(x.getValue().utf8(), y.getValue().utf8());
        case CIMKeyBinding::REFERENCE:
            return SameReference(x.getValue(), y.getValue());
        default:
            return x.getValue() == y.getValue();
    }
}

struct CIMObjectPath::Body : detail::Counted {
    String host;
    CIMNamespaceName name_space;
    CIMName class_name;
    Array<CIMKeyBinding> keys;
};

CIMObjectPath::CIMObjectPath() = default;
CIMObjectPath::CIMObjectPath(const CIMObjectPath&) = default;
CIMObjectPath::~CIMObjectPath() = default;
CIMObjectPath& CIMObjectPath::operator=(const CIMObjectPath&) = default;

CIMObjectPath::CIMObjectPath(const String& objectName) { set(objectName); }

CIMObjectPath::CIMObjectPath(const String& host, const CIMNamespaceName& nameSpace,
                             const CIMName& className, const Array<CIMKeyBinding>& keyBindings) {
    set(host, nameSpace, className, keyBindings);
}

CIMObjectPath& CIMObjectPath::operator=(const String& objectName) {
    set(objectName);
    return *this;
}

CIMObjectPath::Body& CIMObjectPath::Editable() {
    if (!body_) {
        body_ = detail::Shared<Body>(new Body);
    } else if (!body_.IsUnique()) {
        body_ = detail::Shared<Body>(new Body(*body_));
    }
    return *body_;
}

void CIMObjectPath::clear() { body_ = {}; }

void CIMObjectPath::set(const String& host, const CIMNamespaceName& nameSpace,
                        const CIMName& className, const Array<CIMKeyBinding>& keyBindings) {
    setHost(host);
    setNameSpace(nameSpace);
    setClassName(className);
    setKeyBindings(keyBindings);
}

void CIMObjectPath::set(const String& objectName) {
    *this = detail::ParseObjectPath(objectName.utf8());
}

const String& CIMObjectPath::getHost() const { return body_ ? body_->host : kNoText; }

void CIMObjectPath::setHost(const String& host) {
    if (!host.utf8().empty() && !detail::IsPathHost(host.utf8())) {
        detail::ThrowMalformedPath(host.utf8(), "invalid hostname");
    }
    Editable().host = host;
}

const CIMNamespaceName& CIMObjectPath::getNameSpace() const {
    return body_ ? body_->name_space : kNoNamespace;
}

void CIMObjectPath::setNameSpace(const CIMNamespaceName& nameSpace) {
    Editable().name_space = nameSpace;
}

const CIMName& CIMObjectPath::getClassName() const { return body_ ? body_->class_name : kNoName; }

void CIMObjectPath::setClassName(const CIMName& className) { Editable().class_name = className; }

const Array<CIMKeyBinding>& CIMObjectPath::getKeyBindings() const {
    return body_ ? body_->keys : kNoKeys;
}

void CIMObjectPath::setKeyBindings(const Array<CIMKeyBinding>& keyBindings) {
    Editable().keys = SortedByName(keyBindings);
}

String CIMObjectPath::toString() const {
    std::string text;
    if (!getHost().utf8().empty()) {
        text.append("//").append(getHost().utf8()).append("/");
    }
    if (!getNameSpace().isNull()) {
        text.append(getNameSpace().getString().utf8());
    }
    if (!text.empty()) {
        text += ':';
    }
    text += getClassName().getString().utf8();
    char separator = '.';
    for (Uint32 i = 0; i < getKeyBindings().size(); ++i) {
        const CIMKeyBinding& key = getKeyBindings()[i];
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

Boolean CIMObjectPath::identical(const CIMObjectPath& x) const {
    return body_.get() == x.body_.get() ||
           (getClassName() == x.getClassName() && getNameSpace() == x.getNameSpace() &&
            String::equalNoCase(getHost(), x.getHost()) &&
            SameKeys(getKeyBindings(), x.getKeyBindings()));
}

Uint32 CIMObjectPath::makeHashCode() const {
    // Keys compare in ways that a hash of their texts would not follow; their names do not.
    Uint32 hash = 2166136261U;
    const auto mix = [&hash](const String& text) {
        for (const char c : text.utf8()) {
            hash = (hash ^ (static_cast<unsigned char>(c) | 0x20U)) * 16777619U;
        }
    };
    mix(getClassName().getString());
    for (Uint32 i = 0; i < getKeyBindings().size(); ++i) {
        mix(getKeyBindings()[i].getName().getString());
    }
    return hash;
}

Boolean operator==(const CIMObjectPath& x, const CIMObjectPath& y) { return x.identical(y); }

Boolean operator!=(const CIMObjectPath& x, const CIMObjectPath& y) { return !x.identical(y); }

}  // namespace Pegasus::kalvex
