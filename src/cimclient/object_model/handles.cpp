// Qualifiers, properties, instances and objects.
#include "Pegasus/Common/CIMObject.h"

namespace Pegasus::kalvex {

namespace {

const CIMName& NotNull(const CIMName& name) {
    if (name.isNull()) {
        throw UninitializedObjectException();
    }
    return name;
}

template <class Named>
void AppendNamed(Array<Named>& all, const Named& x, const char* kind) {
    if (detail::FindByName(all, x.getName()) != PEG_NOT_FOUND) {
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

}  // namespace Pegasus::kalvex
