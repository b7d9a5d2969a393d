#pragma once

#include <Pegasus/Common/CIMQualifier.h>

namespace Pegasus {

class CIMConstProperty;

class CIMProperty {
public:
    CIMProperty();
    CIMProperty(const CIMProperty&);
    CIMProperty(const CIMName& name, const CIMValue& value, Uint32 arraySize = 0,
                const CIMName& referenceClassName = CIMName(),
                const CIMName& classOrigin = CIMName(), Boolean propagated = false);
    ~CIMProperty();
    CIMProperty& operator=(const CIMProperty&);
    const CIMName& getName() const;
    void setName(const CIMName&);
    const CIMValue& getValue() const;
    void setValue(const CIMValue&);
    CIMType getType() const;
    Boolean isArray() const;
    Uint32 getArraySize() const;
    const CIMName& getReferenceClassName() const;
    const CIMName& getClassOrigin() const;
    void setClassOrigin(const CIMName&);
    Boolean getPropagated() const;
    void setPropagated(Boolean);
    CIMProperty& addQualifier(const CIMQualifier& x);
    Uint32 findQualifier(const CIMName& name) const;
    CIMQualifier getQualifier(Uint32 index);
    CIMConstQualifier getQualifier(Uint32 index) const;
    void removeQualifier(Uint32 index);
    Uint32 getQualifierCount() const;
    Boolean identical(const CIMConstProperty&) const;
    CIMProperty clone() const;
    Boolean isUninitialized() const;
};

class CIMConstProperty {
public:
    CIMConstProperty();
    CIMConstProperty(const CIMConstProperty&);
    CIMConstProperty(const CIMProperty&);
    CIMConstProperty(const CIMName& name, const CIMValue& value, Uint32 arraySize = 0,
                     const CIMName& referenceClassName = CIMName(),
                     const CIMName& classOrigin = CIMName(), Boolean propagated = false);
    ~CIMConstProperty();
    CIMConstProperty& operator=(const CIMConstProperty&);
    CIMConstProperty& operator=(const CIMProperty&);
    const CIMName& getName() const;
    const CIMValue& getValue() const;
    CIMType getType() const;
    Boolean isArray() const;
    Uint32 getArraySize() const;
    const CIMName& getReferenceClassName() const;
    const CIMName& getClassOrigin() const;
    Boolean getPropagated() const;
    Uint32 findQualifier(const CIMName& name) const;
    CIMConstQualifier getQualifier(Uint32 index) const;
    Uint32 getQualifierCount() const;
    Boolean identical(const CIMConstProperty&) const;
    CIMProperty clone() const;
    Boolean isUninitialized() const;
};

}  // namespace Pegasus
