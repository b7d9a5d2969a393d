#pragma once

#include <Pegasus/Common/CIMFlavor.h>
#include <Pegasus/Common/CIMValue.h>

namespace Pegasus {

class CIMConstQualifier;

class CIMQualifier {
public:
    CIMQualifier();
    CIMQualifier(const CIMQualifier&);
    CIMQualifier(const CIMName& name, const CIMValue& value,
                 const CIMFlavor& flavor = CIMFlavor(CIMFlavor::NONE), Boolean propagated = false);
    ~CIMQualifier();
    CIMQualifier& operator=(const CIMQualifier&);
    const CIMName& getName() const;
    void setName(const CIMName&);
    CIMType getType() const;
    Boolean isArray() const;
    const CIMValue& getValue() const;
    void setValue(const CIMValue&);
    const CIMFlavor& getFlavor() const;
    void setFlavor(const CIMFlavor&);
    void unsetFlavor(const CIMFlavor&);
    Uint32 getPropagated() const;
    void setPropagated(Boolean);
    Boolean isUninitialized() const;
    Boolean identical(const CIMConstQualifier&) const;
    CIMQualifier clone() const;
};

class CIMConstQualifier {
public:
    CIMConstQualifier();
    CIMConstQualifier(const CIMConstQualifier&);
    CIMConstQualifier(const CIMQualifier&);
    CIMConstQualifier(const CIMName& name, const CIMValue& value,
                      const CIMFlavor& flavor = CIMFlavor(CIMFlavor::NONE),
                      Boolean propagated = false);
    ~CIMConstQualifier();
    CIMConstQualifier& operator=(const CIMConstQualifier&);
    CIMConstQualifier& operator=(const CIMQualifier&);
    const CIMName& getName() const;
    CIMType getType() const;
    Boolean isArray() const;
    const CIMValue& getValue() const;
    const CIMFlavor& getFlavor() const;
    Uint32 getPropagated() const;
    Boolean isUninitialized() const;
    Boolean identical(const CIMConstQualifier&) const;
    CIMQualifier clone() const;
};

}  // namespace Pegasus
