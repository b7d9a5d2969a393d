// CIM classes, as far as objects in replies can be classes.
#pragma once

#include "Pegasus/Common/CIMObject.h"

PEGASUS_NAMESPACE_BEGIN

class CIMClass : public detail::MutableObjectHandle<CIMClass> {
public:
    CIMClass() = default;
    CIMClass(const CIMName& className);
    explicit CIMClass(const CIMObject& x);
};

PEGASUS_NAMESPACE_END
