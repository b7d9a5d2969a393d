// Qualifiers of properties and instances (DSP0004).
//
// CIMQualifier and CIMConstQualifier are handles: copies speak of one qualifier, clone() makes
// another. A default-constructed handle throws UninitializedObjectException in all members but
// isUninitialized.
#pragma once

#include "Pegasus/Common/Array.h"
#include "Pegasus/Common/CIMFlavor.h"
#include "Pegasus/Common/CIMName.h"
#include "Pegasus/Common/CIMValue.h"

PEGASUS_NAMESPACE_BEGIN

class CIMConstQualifier;
class CIMQualifier;

namespace detail {

struct QualifierBody : Counted {
    QualifierBody(const CIMName& name_, const CIMValue& value_, const CIMFlavor& flavor_,
                  Boolean propagated_)
        : name(name_), value(value_), flavor(flavor_), propagated(propagated_) {}
    CIMName name;
    CIMValue value;
    CIMFlavor flavor;
    Boolean propagated;
};

/// What both kinds of handle can read.
class QualifierHandle {
public:
    QualifierHandle() = default;
    QualifierHandle(const CIMName& name, const CIMValue& value, const CIMFlavor& flavor,
                    Boolean propagated);

    const CIMName& getName() const { return Body().name; }
    CIMType getType() const { return Body().value.getType(); }
    Boolean isArray() const { return Body().value.isArray(); }
    const CIMValue& getValue() const { return Body().value; }
    const CIMFlavor& getFlavor() const { return Body().flavor; }
    Uint32 getPropagated() const { return Body().propagated; }
    Boolean isUninitialized() const { return !body_; }
    Boolean identical(const CIMConstQualifier& x) const;
    CIMQualifier clone() const;

protected:
    QualifierBody& Body() const;
    Shared<QualifierBody> body_;
};

}  // namespace detail

class CIMQualifier : public detail::QualifierHandle {
public:
    CIMQualifier() = default;
    CIMQualifier(const CIMName& name, const CIMValue& value,
                 const CIMFlavor& flavor = CIMFlavor(CIMFlavor::NONE), Boolean propagated = false)
        : QualifierHandle(name, value, flavor, propagated) {}

    void setName(const CIMName& name);
    void setValue(const CIMValue& value) { Body().value = value; }
    void setFlavor(const CIMFlavor& flavor) { Body().flavor.addFlavor(flavor); }
    void unsetFlavor(const CIMFlavor& flavor) { Body().flavor.removeFlavor(flavor); }
    void setPropagated(Boolean propagated) { Body().propagated = propagated; }
};

class CIMConstQualifier : public detail::QualifierHandle {
public:
    CIMConstQualifier() = default;
    CIMConstQualifier(const CIMQualifier& x) : QualifierHandle(x) {}
    CIMConstQualifier(const CIMName& name, const CIMValue& value,
                      const CIMFlavor& flavor = CIMFlavor(CIMFlavor::NONE),
                      Boolean propagated = false)
        : QualifierHandle(name, value, flavor, propagated) {}
};

PEGASUS_NAMESPACE_END
