// Properties of instances (DSP0004).
//
// CIMProperty and CIMConstProperty are handles: copies refer to one property.
#pragma once

#include "Pegasus/Common/Array.h"
#include "Pegasus/Common/CIMName.h"
#include "Pegasus/Common/CIMQualifier.h"
#include "Pegasus/Common/CIMValue.h"

PEGASUS_NAMESPACE_BEGIN

namespace detail {

struct PropertyBody : Counted {
    CIMName name;
    CIMValue value;
    Array<CIMQualifier> qualifiers;
};

/// What both kinds of handle can read.
class PropertyHandle {
public:
    const CIMName& getName() const { return body_->name; }
    const CIMValue& getValue() const { return body_->value; }
    CIMType getType() const { return getValue().getType(); }
    Boolean isArray() const { return getValue().isArray(); }
    /// The position, or PEG_NOT_FOUND.
    Uint32 findQualifier(const CIMName& name) const { return FindByName(Qualifiers(), name); }
    CIMConstQualifier getQualifier(Uint32 index) const { return Qualifiers()[index]; }
    Uint32 getQualifierCount() const { return Qualifiers().size(); }

protected:
    explicit PropertyHandle(Shared<PropertyBody> body) : body_(std::move(body)) {}
    const Array<CIMQualifier>& Qualifiers() const { return body_->qualifiers; }
    Shared<PropertyBody> body_;
};

}  // namespace detail

class CIMProperty : public detail::PropertyHandle {
public:
    /// A null name throws UninitializedObjectException.
    CIMProperty(const CIMName& name, const CIMValue& value);
    /// For the client's own rooms.
    explicit CIMProperty(detail::Shared<detail::PropertyBody> body)
        : PropertyHandle(std::move(body)) {}

    /// A qualifier of the same name throws AlreadyExistsException.
    CIMProperty& addQualifier(const CIMQualifier& x);
};

class CIMConstProperty : public detail::PropertyHandle {
public:
    CIMConstProperty(const CIMProperty& x) : PropertyHandle(x) {}
};

PEGASUS_NAMESPACE_END
