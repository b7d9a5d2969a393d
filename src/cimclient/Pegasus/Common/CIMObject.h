// CIM objects, with their path: instances, or classes in replies.
//
// CIMInstance and CIMObject are handles: copies refer to one object. A default-constructed handle
// throws UninitializedObjectException in all its members.
#pragma once

#include "Pegasus/Common/Array.h"
#include "Pegasus/Common/CIMName.h"
#include "Pegasus/Common/CIMObjectPath.h"
#include "Pegasus/Common/CIMProperty.h"
#include "Pegasus/Common/CIMQualifier.h"

PEGASUS_NAMESPACE_BEGIN

namespace detail {

struct ObjectBody : Counted {
    CIMObjectPath path;
    Array<CIMQualifier> qualifiers;
    Array<CIMProperty> properties;
    Boolean is_class = false;
};

/// What both kinds of handle can read.
class ObjectHandle {
public:
    const CIMObjectPath& getPath() const { return Body().path; }
    /// The position in document order, or PEG_NOT_FOUND.
    Uint32 findProperty(const CIMName& name) const { return FindByName(Properties(), name); }
    CIMConstProperty getProperty(Uint32 index) const { return Properties()[index]; }
    Uint32 getPropertyCount() const { return Properties().size(); }

protected:
    ObjectHandle() = default;
    explicit ObjectHandle(Shared<ObjectBody> body) : body_(std::move(body)) {}
    ObjectBody& Body() const {
        if (!body_) {
            throw UninitializedObjectException();
        }
        return *body_;
    }
    const Array<CIMProperty>& Properties() const { return Body().properties; }

    Shared<ObjectBody> body_;
    friend const ObjectBody& BodyOf(const ObjectHandle& object);
};

inline const ObjectBody& BodyOf(const ObjectHandle& object) { return object.Body(); }

}  // namespace detail

class CIMInstance : public detail::ObjectHandle {
public:
    CIMInstance() = default;
    /// A null name throws UninitializedObjectException.
    CIMInstance(const CIMName& className);
    /// For the client's own rooms.
    explicit CIMInstance(detail::Shared<detail::ObjectBody> body) : ObjectHandle(std::move(body)) {}

    void setPath(const CIMObjectPath& path) { Body().path = path; }
    /// A property of the same name throws AlreadyExistsException.
    CIMInstance& addProperty(const CIMProperty& x);
};

class CIMObject : public detail::ObjectHandle {
public:
    CIMObject() = default;
    CIMObject(const CIMInstance& x) : ObjectHandle(x) {}
    /// For the client's own rooms.
    explicit CIMObject(detail::Shared<detail::ObjectBody> body) : ObjectHandle(std::move(body)) {}
};

PEGASUS_NAMESPACE_END
