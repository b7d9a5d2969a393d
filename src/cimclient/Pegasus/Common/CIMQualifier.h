// Qualifiers of properties and instances (DSP0004).
#pragma once

#include "Pegasus/Common/CIMName.h"
#include "Pegasus/Common/CIMValue.h"

PEGASUS_NAMESPACE_BEGIN

class CIMQualifier {
public:
    /// A null name throws UninitializedObjectException.
    CIMQualifier(const CIMName& name, const CIMValue& value);

    const CIMName& getName() const { return name_; }
    const CIMValue& getValue() const { return value_; }

private:
    CIMName name_;
    CIMValue value_;
};

class CIMConstQualifier {
public:
    CIMConstQualifier(const CIMQualifier& x) : qualifier_(x) {}

    const CIMName& getName() const { return qualifier_.getName(); }
    const CIMValue& getValue() const { return qualifier_.getValue(); }
    Boolean isArray() const { return getValue().isArray(); }

private:
    CIMQualifier qualifier_;
};

namespace detail {

/// The position of the first that has the name, or PEG_NOT_FOUND.
template <class Named>
Uint32 FindByName(const Array<Named>& all, const CIMName& name) {
    for (Uint32 i = 0; i < all.size(); ++i) {
        if (all[i].getName() == name) {
            return i;
        }
    }
    return PEG_NOT_FOUND;
}

}  // namespace detail

PEGASUS_NAMESPACE_END
