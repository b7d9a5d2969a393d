// CIM objects: instances, or classes, with their path. See CIMInstance.h for what a handle is.
#pragma once

#include "Pegasus/Common/Array.h"
#include "Pegasus/Common/CIMName.h"
#include "Pegasus/Common/CIMObjectPath.h"
#include "Pegasus/Common/CIMProperty.h"
#include "Pegasus/Common/CIMQualifier.h"

PEGASUS_NAMESPACE_BEGIN

class CIMClass;
class CIMConstInstance;
class CIMConstObject;
class CIMInstance;
class CIMObject;

namespace detail {

struct ObjectBody : Counted {
    CIMObjectPath path;
    ArenaVector<CIMQualifier> qualifiers;
    ArenaVector<CIMProperty> properties;
    Boolean is_class = false;
};

/// What all four kinds of handle can read.
class ObjectHandle {
public:
    ObjectHandle() = default;

    const CIMName& getClassName() const { return Body().path.getClassName(); }
    const CIMObjectPath& getPath() const { return Body().path; }
    Uint32 findQualifier(const CIMName& name) const;
    CIMConstQualifier getQualifier(Uint32 index) const;
    Uint32 getQualifierCount() const { return static_cast<Uint32>(Body().qualifiers.size()); }
    /// The position in document order, or PEG_NOT_FOUND.
    Uint32 findProperty(const CIMName& name) const;
    CIMConstProperty getProperty(Uint32 index) const;
    Uint32 getPropertyCount() const { return static_cast<Uint32>(Body().properties.size()); }
    Boolean isUninitialized() const { return !body_; }

protected:
    explicit ObjectHandle(const CIMName& className);
    ObjectBody& Body() const;
    void AddQualifier(const CIMQualifier& x) const;
    void AddProperty(const CIMProperty& x) const;
    Boolean IsIdentical(const ObjectHandle& x) const;
    Shared<ObjectBody> CloneBody() const;

    Shared<ObjectBody> body_;
    friend class ObjectAccess;
};

/// Lets the client's own rooms fill an object.
class ObjectAccess {
public:
    /// Gives an empty handle a body.
    static ObjectBody& MakeBody(ObjectHandle& object) {
        object.body_ = Shared<ObjectBody>(new ObjectBody);
        return *object.body_;
    }
};

/// Members that change the object, for the handle class `Handle`.
template <class Handle>
class MutableObjectHandle : public ObjectHandle {
public:
    void setPath(const CIMObjectPath& path) { Body().path = path; }
    /// A qualifier or property of the same name throws AlreadyExistsException.
    Handle& addQualifier(const CIMQualifier& x) {
        AddQualifier(x);
        return static_cast<Handle&>(*this);
    }
    Handle& addProperty(const CIMProperty& x) {
        AddProperty(x);
        return static_cast<Handle&>(*this);
    }
    using ObjectHandle::getProperty;
    using ObjectHandle::getQualifier;
    CIMQualifier getQualifier(Uint32 index) {
        CheckIndex(index, getQualifierCount());
        return Body().qualifiers[index];
    }
    CIMProperty getProperty(Uint32 index) {
        CheckIndex(index, getPropertyCount());
        return Body().properties[index];
    }
    void removeQualifier(Uint32 index) {
        CheckIndex(index, getQualifierCount());
        Body().qualifiers.erase(Body().qualifiers.begin() + index);
    }
    void removeProperty(Uint32 index) {
        CheckIndex(index, getPropertyCount());
        Body().properties.erase(Body().properties.begin() + index);
    }

protected:
    using ObjectHandle::ObjectHandle;

private:
    static void CheckIndex(Uint32 index, Uint32 size) {
        if (index >= size) {
            throw IndexOutOfBoundsException();
        }
    }
};

}  // namespace detail

class CIMInstance : public detail::MutableObjectHandle<CIMInstance> {
public:
    CIMInstance() = default;
    /// An object that is no instance throws DynamicCastFailedException.
    explicit CIMInstance(const CIMObject& x);
    CIMInstance(const CIMName& className);
    CIMInstance clone() const;
    Boolean identical(const CIMConstInstance& x) const;
};

class CIMConstInstance : public detail::ObjectHandle {
public:
    CIMConstInstance() = default;
    CIMConstInstance(const CIMInstance& x) : ObjectHandle(x) {}
    explicit CIMConstInstance(const CIMObject& x);
    CIMConstInstance(const CIMName& className) : ObjectHandle(className) {}
    CIMInstance clone() const;
    Boolean identical(const CIMConstInstance& x) const { return IsIdentical(x); }
};

class CIMObject : public detail::MutableObjectHandle<CIMObject> {
public:
    CIMObject() = default;
    CIMObject(const CIMClass& x);
    CIMObject(const CIMInstance& x);
    Boolean isClass() const { return Body().is_class; }
    Boolean isInstance() const { return !Body().is_class; }
    /// The INSTANCE or CLASS element of DSP0201, one element a line.
    String toString() const;
    CIMObject clone() const;
    Boolean identical(const CIMConstObject& x) const;
};

class CIMConstObject : public detail::ObjectHandle {
public:
    CIMConstObject() = default;
    CIMConstObject(const CIMObject& x) : ObjectHandle(x) {}
    CIMConstObject(const CIMInstance& x) : ObjectHandle(x) {}
    Boolean isClass() const { return Body().is_class; }
    Boolean isInstance() const { return !Body().is_class; }
    String toString() const;
    CIMObject clone() const;
    Boolean identical(const CIMConstObject& x) const { return IsIdentical(x); }
};

PEGASUS_NAMESPACE_END
