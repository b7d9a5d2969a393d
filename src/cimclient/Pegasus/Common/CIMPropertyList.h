// Which properties a request asks for.
#pragma once

#include "Pegasus/Common/Array.h"
#include "Pegasus/Common/CIMName.h"

PEGASUS_NAMESPACE_BEGIN

/// A null list asks for all properties, an empty one for none.
class CIMPropertyList {
public:
    CIMPropertyList() = default;
    /// A null name throws UninitializedObjectException.
    CIMPropertyList(const Array<CIMName>& propertyNames);

    Boolean isNull() const { return is_null_; }
    Uint32 size() const { return names_.size(); }
    const CIMName& operator[](Uint32 index) const { return names_[index]; }

private:
    Array<CIMName> names_;
    Boolean is_null_ = true;
};

PEGASUS_NAMESPACE_END
