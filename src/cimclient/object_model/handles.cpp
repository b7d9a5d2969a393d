// Qualifiers, properties, instances and objects, and lists of properties.
#include "Pegasus/Common/CIMObject.h"
#include "Pegasus/Common/CIMPropertyList.h"

namespace Pegasus::kalvex {

namespace {

const CIMName& NotNull(const CIMName& name) {
    if (name.isNull()) {
        throw UninitializedObjectException();
    }
    return name;
}

template <class Named>
Uint32 FindByName(const Array<Named>& all, const CIMName& name) {
    for (Uint32 i = 0; i < all.size(); ++i) {
        if (all[i].getName() == name) {
            return i;
        }
    }
    return PEG_NOT_FOUND;
}

template <class Named>
void AppendNamed(Array<Named>& all, const Named& x, const char* kind) {
    if (FindByName(all, x.getName()) != PEG_NOT_FOUND) {
        throw AlreadyExistsException(kind + (" \"" + x.getName().getString() + "\""));
    }
    all.append(x);
}

}  // namespace

CIMQualifier::CIMQualifier(const CIMName& name, const CIMValue& value)
    : name_(NotNull(name)), value_(value) {}

CIMProperty::CIMProperty(const CIMName& name, const CIMValue& value)
    : PropertyHandle(detail::Shared<detail::PropertyBody>(new detail::PropertyBody)) {
    body_->name = NotNull(name);
    body_->value = value;
}

CIMProperty& CIMProperty::addQualifier(const CIMQualifier& x) {
    AppendNamed(body_->qualifiers, x, "qualifier");
    return *this;
}

CIMInstance::CIMInstance(const CIMName& className)
    : ObjectHandle(detail::Shared<detail::ObjectBody>(new detail::ObjectBody)) {
    body_->path = CIMObjectPath(String(), CIMNamespaceName(), NotNull(className));
}

CIMInstance& CIMInstance::addProperty(const CIMProperty& x) {
    AppendNamed(Body().properties, x, "property");
    return *this;
}

Uint32 detail::PropertyHandle::findQualifier(const CIMName& name) const {
    return FindByName(Qualifiers(), name);
}

Uint32 detail::ObjectHandle::findProperty(const CIMName& name) const {
    return FindByName(Properties(), name);
}

CIMPropertyList::CIMPropertyList(const Array<CIMName>& propertyNames)
    : names_(propertyNames), is_null_(false) {
    for (Uint32 i = 0; i < names_.size(); ++i) {
        NotNull(propertyNames[i]);
    }
}

}  // namespace Pegasus::kalvex
