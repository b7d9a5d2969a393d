// Qualifiers, properties, instances and objects: handles to shared bodies.
#include <string>

#include "Pegasus/Common/CIMClass.h"
#include "Pegasus/Common/CIMInstance.h"
#include "object_model/object_text.h"

namespace Pegasus::kalvex {

namespace detail {

namespace {

void CheckIndex(Uint32 index, std::size_t size) {
    if (index >= size) {
        throw IndexOutOfBoundsException();
    }
}

void CheckName(const CIMName& name) {
    if (name.isNull()) {
        throw UninitializedObjectException();
    }
}

template <class Handle>
Uint32 FindByName(const ArenaVector<Handle>& handles, const CIMName& name) {
    for (std::size_t i = 0; i < handles.size(); ++i) {
        if (handles[i].getName() == name) {
            return static_cast<Uint32>(i);
        }
    }
    return PEG_NOT_FOUND;
}

template <class Handle>
void AppendNamed(ArenaVector<Handle>& handles, const Handle& x, const char* kind) {
    if (FindByName(handles, x.getName()) != PEG_NOT_FOUND) {
        throw AlreadyExistsException(String::FromUtf8(std::string(kind) + " \"") +
                                     x.getName().getString() + "\"");
    }
    handles.push_back(x);
}

template <class Handle>
bool SameHandles(const ArenaVector<Handle>& x, const ArenaVector<Handle>& y) {
    if (x.size() != y.size()) {
        return false;
    }
    for (std::size_t i = 0; i < x.size(); ++i) {
        if (!x[i].identical(y[i])) {
            return false;
        }
    }
    return true;
}

template <class Handle>
ArenaVector<Handle> Clones(const ArenaVector<Handle>& handles) {
    ArenaVector<Handle> clones;
    clones.reserve(handles.size());
    for (const Handle& handle : handles) {
        clones.push_back(handle.clone());
    }
    return clones;
}

template <class Body>
Body& Initialized(const Shared<Body>& body) {
    if (!body) {
        throw UninitializedObjectException();
    }
    return *body;
}

}  // namespace

QualifierHandle::QualifierHandle(const CIMName& name, const CIMValue& value,
                                 const CIMFlavor& flavor, Boolean propagated)
    : body_(new QualifierBody(name, value, flavor, propagated)) {
    CheckName(name);
}

QualifierBody& QualifierHandle::Body() const { return Initialized(body_); }

Boolean QualifierHandle::identical(const CIMConstQualifier& x) const {
    return getName() == x.getName() && getValue() == x.getValue() && getFlavor() == x.getFlavor() &&
           getPropagated() == x.getPropagated();
}

CIMQualifier QualifierHandle::clone() const {
    return CIMQualifier(getName(), getValue(), getFlavor(), getPropagated() != 0);
}

const PropertyExtras& PropertyBody::Extras() const {
    static const PropertyExtras none;
    return extras ? *extras : none;
}

PropertyExtras& PropertyBody::EditableExtras() {
    if (!extras) {
        extras = std::make_unique<PropertyExtras>();
    }
    return *extras;
}

PropertyHandle::PropertyHandle(const CIMName& name, const CIMValue& value, Uint32 arraySize,
                               const CIMName& referenceClassName, const CIMName& classOrigin,
                               Boolean propagated)
    : body_(new PropertyBody) {
    CheckName(name);
    const bool wrong_size =
        arraySize != 0 && (!value.isArray() || value.getArraySize() != arraySize);
    if (wrong_size || (!referenceClassName.isNull() && value.getType() != CIMTYPE_REFERENCE)) {
        throw TypeMismatchException();
    }
    body_->name = name;
    body_->value = value;
    body_->class_origin = classOrigin;
    body_->propagated = propagated;
    if (arraySize != 0 || !referenceClassName.isNull()) {
        body_->EditableExtras().array_size = arraySize;
        body_->EditableExtras().reference_class = referenceClassName;
    }
}

PropertyBody& PropertyHandle::Body() const { return Initialized(body_); }

Uint32 PropertyHandle::findQualifier(const CIMName& name) const {
    return FindByName(Body().Extras().qualifiers, name);
}

CIMConstQualifier PropertyHandle::getQualifier(Uint32 index) const {
    CheckIndex(index, getQualifierCount());
    return Body().Extras().qualifiers[index];
}

Boolean PropertyHandle::identical(const CIMConstProperty& x) const {
    return getName() == x.getName() && getValue() == x.getValue() &&
           getReferenceClassName() == x.getReferenceClassName() &&
           getClassOrigin() == x.getClassOrigin() && getPropagated() == x.getPropagated() &&
           SameHandles(Body().Extras().qualifiers,
                       static_cast<const PropertyHandle&>(x).Body().Extras().qualifiers);
}

CIMProperty PropertyHandle::clone() const {
    CIMProperty clone(getName(), getValue(), getArraySize(), getReferenceClassName(),
                      getClassOrigin(), getPropagated());
    if (getQualifierCount() != 0) {
        static_cast<PropertyHandle&>(clone).Body().EditableExtras().qualifiers =
            Clones(Body().Extras().qualifiers);
    }
    return clone;
}

ObjectHandle::ObjectHandle(const CIMName& className) : body_(new ObjectBody) {
    CheckName(className);
    body_->path.setClassName(className);
}

ObjectBody& ObjectHandle::Body() const { return Initialized(body_); }

Uint32 ObjectHandle::findQualifier(const CIMName& name) const {
    return FindByName(Body().qualifiers, name);
}

CIMConstQualifier ObjectHandle::getQualifier(Uint32 index) const {
    CheckIndex(index, Body().qualifiers.size());
    return Body().qualifiers[index];
}

Uint32 ObjectHandle::findProperty(const CIMName& name) const {
    return FindByName(Body().properties, name);
}

CIMConstProperty ObjectHandle::getProperty(Uint32 index) const {
    CheckIndex(index, Body().properties.size());
    return Body().properties[index];
}

void ObjectHandle::AddQualifier(const CIMQualifier& x) const {
    AppendNamed(Body().qualifiers, x, "qualifier");
}

void ObjectHandle::AddProperty(const CIMProperty& x) const {
    AppendNamed(Body().properties, x, "property");
}

Boolean ObjectHandle::IsIdentical(const ObjectHandle& x) const {
    return Body().is_class == x.Body().is_class && getPath() == x.getPath() &&
           SameHandles(Body().qualifiers, x.Body().qualifiers) &&
           SameHandles(Body().properties, x.Body().properties);
}

Shared<ObjectBody> ObjectHandle::CloneBody() const {
    Shared<ObjectBody> clone(new ObjectBody(Body()));
    clone->qualifiers = Clones(Body().qualifiers);
    clone->properties = Clones(Body().properties);
    return clone;
}

}  // namespace detail

void CIMQualifier::setName(const CIMName& name) {
    detail::CheckName(name);
    Body().name = name;
}

void CIMProperty::setName(const CIMName& name) {
    detail::CheckName(name);
    Body().name = name;
}

void CIMProperty::setValue(const CIMValue& value) {
    if (!getValue().typeCompatible(value)) {
        throw TypeMismatchException();
    }
    Body().value = value;
}

CIMProperty& CIMProperty::addQualifier(const CIMQualifier& x) {
    detail::AppendNamed(Body().EditableExtras().qualifiers, x, "qualifier");
    return *this;
}

CIMQualifier CIMProperty::getQualifier(Uint32 index) {
    detail::CheckIndex(index, getQualifierCount());
    return Body().EditableExtras().qualifiers[index];
}

void CIMProperty::removeQualifier(Uint32 index) {
    detail::CheckIndex(index, getQualifierCount());
    auto& qualifiers = Body().EditableExtras().qualifiers;
    qualifiers.erase(qualifiers.begin() + index);
}

CIMInstance::CIMInstance(const CIMObject& x) {
    if (x.isUninitialized() || x.isClass()) {
        throw DynamicCastFailedException();
    }
    ObjectHandle::operator=(x);
}

CIMInstance::CIMInstance(const CIMName& className) : MutableObjectHandle(className) {}

CIMInstance CIMInstance::clone() const {
    CIMInstance clone;
    clone.body_ = CloneBody();
    return clone;
}

Boolean CIMInstance::identical(const CIMConstInstance& x) const { return IsIdentical(x); }

CIMConstInstance::CIMConstInstance(const CIMObject& x) : ObjectHandle(CIMInstance(x)) {}

CIMInstance CIMConstInstance::clone() const {
    CIMInstance handle;
    static_cast<ObjectHandle&>(handle) = *this;
    return handle.clone();
}

CIMObject::CIMObject(const CIMClass& x) { ObjectHandle::operator=(x); }

CIMObject::CIMObject(const CIMInstance& x) { ObjectHandle::operator=(x); }

String CIMObject::toString() const { return CIMConstObject(*this).toString(); }

CIMObject CIMObject::clone() const {
    CIMObject clone;
    clone.body_ = CloneBody();
    return clone;
}

Boolean CIMObject::identical(const CIMConstObject& x) const { return IsIdentical(x); }

String CIMConstObject::toString() const {
    std::string text;
    detail::AppendObjectText(text, *this);
    return String::FromUtf8(text);
}

CIMObject CIMConstObject::clone() const {
    CIMObject handle;
    static_cast<ObjectHandle&>(handle) = *this;
    return handle.clone();
}

CIMClass::CIMClass(const CIMName& className) : MutableObjectHandle(className) {
    Body().is_class = true;
}

CIMClass::CIMClass(const CIMObject& x) {
    if (x.isUninitialized() || !x.isClass()) {
        throw DynamicCastFailedException();
    }
    ObjectHandle::operator=(x);
}

}  // namespace Pegasus::kalvex
