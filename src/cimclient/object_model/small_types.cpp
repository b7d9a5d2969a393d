// Property lists, flavors, type names, TLS settings.
#include <string>

#include "Pegasus/Common/CIMFlavor.h"
#include "Pegasus/Common/CIMPropertyList.h"
#include "Pegasus/Common/CIMType.h"

namespace Pegasus::kalvex {

CIMPropertyList::CIMPropertyList(const Array<CIMName>& propertyNames) { set(propertyNames); }

void CIMPropertyList::set(const Array<CIMName>& propertyNames) {
    for (Uint32 i = 0; i < propertyNames.size(); ++i) {
        if (propertyNames[i].isNull()) {
            throw UninitializedObjectException();
        }
    }
    names_ = propertyNames;
    is_null_ = false;
}

void CIMPropertyList::clear() { *this = CIMPropertyList(); }

Boolean CIMPropertyList::contains(const CIMName& name) const {
    for (Uint32 i = 0; i < names_.size(); ++i) {
        if (names_[i] == name) {
            return true;
        }
    }
    return false;
}

String CIMPropertyList::toString() const {
    if (is_null_) {
        return "NULL";
    }
    std::string text;
    for (Uint32 i = 0; i < names_.size(); ++i) {
        text.append(i == 0 ? "" : ", ").append(names_[i].getString().utf8());
    }
    return text.empty() ? String("EMPTY") : String::FromUtf8(text);
}

const CIMFlavor CIMFlavor::NONE(0);
const CIMFlavor CIMFlavor::OVERRIDABLE(1);
const CIMFlavor CIMFlavor::ENABLEOVERRIDE(1);
const CIMFlavor CIMFlavor::DISABLEOVERRIDE(16);
const CIMFlavor CIMFlavor::TOSUBCLASS(2);
const CIMFlavor CIMFlavor::RESTRICTED(32);
const CIMFlavor CIMFlavor::TOINSTANCE(4);
const CIMFlavor CIMFlavor::TRANSLATABLE(8);
const CIMFlavor CIMFlavor::DEFAULTS(3);

String CIMFlavor::toString() const {
    static const struct {
        const CIMFlavor& flavor;
        const char* name;
    } kNames[] = {{OVERRIDABLE, "OVERRIDABLE "},         {TOSUBCLASS, "TOSUBCLASS "},
                  {TOINSTANCE, "TOINSTANCE "},           {TRANSLATABLE, "TRANSLATABLE "},
                  {DISABLEOVERRIDE, "DISABLEOVERRIDE "}, {RESTRICTED, "RESTRICTED "}};
    std::string text;
    for (const auto& row : kNames) {
        text += hasFlavor(row.flavor) ? row.name : "";
    }
    return String::FromUtf8(text);
}

const char* cimTypeToString(const CIMType type) {
    static const char* const kNames[] = {"boolean", "uint8",   "sint8",  "uint16",   "sint16",
                                         "uint32",  "sint32",  "uint64", "sint64",   "real32",
                                         "real64",  "char16",  "string", "datetime", "reference",
                                         "object",  "instance"};
    return type >= 0 && type <= CIMTYPE_INSTANCE ? kNames[type] : "unknown";
}

}  // namespace Pegasus::kalvex
