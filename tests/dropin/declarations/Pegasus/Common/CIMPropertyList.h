#pragma once

#include <Pegasus/Common/CIMName.h>

namespace Pegasus {

class CIMPropertyList {
public:
    CIMPropertyList();
    CIMPropertyList(const CIMPropertyList&);
    CIMPropertyList(const Array<CIMName>& propertyNames);
    ~CIMPropertyList();
    void set(const Array<CIMName>& propertyNames);
    CIMPropertyList& operator=(const CIMPropertyList&);
    void clear();
    Boolean isNull() const;
    Uint32 size() const;
    const CIMName& operator[](Uint32 index) const;
    Array<CIMName> getPropertyNameArray() const;
    Boolean contains(const CIMName& name) const;
    String toString() const;
};

}  // namespace Pegasus
