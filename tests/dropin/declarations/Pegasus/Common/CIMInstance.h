#pragma once

#include <Pegasus/Common/CIMObject.h>

namespace Pegasus {

class CIMConstInstance;

class CIMInstance {
public:
    CIMInstance();
    CIMInstance(const CIMInstance&);
    explicit CIMInstance(const CIMObject& x);
    CIMInstance(const CIMName& className);
    ~CIMInstance();
    CIMInstance& operator=(const CIMInstance&);
    const CIMName& getClassName() const;
    const CIMObjectPath& getPath() const;
    void setPath(const CIMObjectPath&);
    CIMInstance& addQualifier(const CIMQualifier&);
    Uint32 findQualifier(const CIMName&) const;
    CIMQualifier getQualifier(Uint32);
    CIMConstQualifier getQualifier(Uint32) const;
    void removeQualifier(Uint32);
    Uint32 getQualifierCount() const;
    CIMInstance& addProperty(const CIMProperty& x);
    Uint32 findProperty(const CIMName& name) const;
    CIMProperty getProperty(Uint32 index);
    CIMConstProperty getProperty(Uint32 index) const;
    void removeProperty(Uint32 index);
    Uint32 getPropertyCount() const;
    CIMInstance clone() const;
    Boolean identical(const CIMConstInstance&) const;
    Boolean isUninitialized() const;
};

class CIMConstInstance {
public:
    CIMConstInstance();
    CIMConstInstance(const CIMConstInstance&);
    CIMConstInstance(const CIMInstance&);
    explicit CIMConstInstance(const CIMObject& x);
    CIMConstInstance(const CIMName& className);
    ~CIMConstInstance();
    CIMConstInstance& operator=(const CIMConstInstance&);
    CIMConstInstance& operator=(const CIMInstance&);
    const CIMName& getClassName() const;
    const CIMObjectPath& getPath() const;
    Uint32 findQualifier(const CIMName&) const;
    CIMConstQualifier getQualifier(Uint32) const;
    Uint32 getQualifierCount() const;
    Uint32 findProperty(const CIMName& name) const;
    CIMConstProperty getProperty(Uint32 index) const;
    Uint32 getPropertyCount() const;
    CIMInstance clone() const;
    Boolean identical(const CIMConstInstance&) const;
    Boolean isUninitialized() const;
};

}  // namespace Pegasus
