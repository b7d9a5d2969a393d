// Properties of instances (DSP0004).
//
// CIMProperty and CIMConstProperty are handles: copies speak of one property, clone() makes
// another. A default-constructed handle throws UninitializedObjectException in all members but
// isUninitialized.
#pragma once

#include <memory>

#include "Pegasus/Common/Array.h"
#include "Pegasus/Common/CIMName.h"
#include "Pegasus/Common/CIMQualifier.h"
#include "Pegasus/Common/CIMValue.h"

PEGASUS_NAMESPACE_BEGIN

class CIMConstProperty;
class CIMProperty;

namespace detail {

class PropertyAccess;

/// What few properties have.
struct PropertyExtras {
    CIMName reference_class;
    ArenaVector<CIMQualifier> qualifiers;
    Uint32 array_size = 0;
};

struct PropertyBody : Counted {
    /// Those of a property that has none are empty.
    const PropertyExtras& Extras() const;
    PropertyExtras& EditableExtras();

    Boolean propagated = false;
    CIMName name;
    CIMValue value;
    CIMName class_origin;
    std::unique_ptr<PropertyExtras> extras;
};

/// What both kinds of handle can read.
class PropertyHandle {
public:
    PropertyHandle() = default;
    PropertyHandle(const CIMName& name, const CIMValue& value, Uint32 arraySize,
                   const CIMName& referenceClassName, const CIMName& classOrigin,
                   Boolean propagated);

    const CIMName& getName() const { return Body().name; }
    const CIMValue& getValue() const { return Body().value; }
    CIMType getType() const { return Body().value.getType(); }
    Boolean isArray() const { return Body().value.isArray(); }
    /// The declared fixed size, 0 for a variable one.
    Uint32 getArraySize() const { return Body().Extras().array_size; }
    const CIMName& getReferenceClassName() const { return Body().Extras().reference_class; }
    const CIMName& getClassOrigin() const { return Body().class_origin; }
    Boolean getPropagated() const { return Body().propagated; }
    Uint32 findQualifier(const CIMName& name) const;
    CIMConstQualifier getQualifier(Uint32 index) const;
    Uint32 getQualifierCount() const {
        return static_cast<Uint32>(Body().Extras().qualifiers.size());
    }
    Boolean identical(const CIMConstProperty& x) const;
    CIMProperty clone() const;
    Boolean isUninitialized() const { return !body_; }

protected:
    explicit PropertyHandle(Shared<PropertyBody> body) : body_(std::move(body)) {}
    PropertyBody& Body() const;
    Shared<PropertyBody> body_;
    friend class PropertyAccess;
};

}  // namespace detail

class CIMProperty : public detail::PropertyHandle {
public:
    CIMProperty() = default;
    /// A null name, or a size or reference class that does not suit the value, throws.
    CIMProperty(const CIMName& name, const CIMValue& value, Uint32 arraySize = 0,
                const CIMName& referenceClassName = CIMName(),
                const CIMName& classOrigin = CIMName(), Boolean propagated = false)
        : PropertyHandle(name, value, arraySize, referenceClassName, classOrigin, propagated) {}

    void setName(const CIMName& name);
    /// A value of another type throws TypeMismatchException.
    void setValue(const CIMValue& value);
    void setClassOrigin(const CIMName& classOrigin) { Body().class_origin = classOrigin; }
    void setPropagated(Boolean propagated) { Body().propagated = propagated; }
    CIMProperty& addQualifier(const CIMQualifier& x);
    using PropertyHandle::getQualifier;
    CIMQualifier getQualifier(Uint32 index);
    void removeQualifier(Uint32 index);

private:
    using PropertyHandle::PropertyHandle;
    friend class detail::PropertyAccess;
};

namespace detail {

/// Lets the client's own rooms make properties, past the checks made for hand-built ones.
class PropertyAccess {
public:
    static CIMProperty Make(Shared<PropertyBody> body) { return CIMProperty(std::move(body)); }
};

}  // namespace detail

class CIMConstProperty : public detail::PropertyHandle {
public:
    CIMConstProperty() = default;
    CIMConstProperty(const CIMProperty& x) : PropertyHandle(x) {}
    CIMConstProperty(const CIMName& name, const CIMValue& value, Uint32 arraySize = 0,
                     const CIMName& referenceClassName = CIMName(),
                     const CIMName& classOrigin = CIMName(), Boolean propagated = false)
        : PropertyHandle(name, value, arraySize, referenceClassName, classOrigin, propagated) {}
};

PEGASUS_NAMESPACE_END
