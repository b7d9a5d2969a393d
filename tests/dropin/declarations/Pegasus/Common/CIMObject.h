#pragma once

#include <Pegasus/Common/CIMProperty.h>

namespace Pegasus {

class CIMClass;
class CIMConstObject;

class CIMObject {
public:
    CIMObject();
    CIMObject(const CIMObject&);
    CIMObject(const CIMClass&);
    CIMObject(const CIMInstance&);
    ~CIMObject();
    CIMObject& operator=(const CIMObject&);
    const CIMName& getClassName() const;
    const CIMObjectPath& getPath() const;
    void setPath(const CIMObjectPath&);
    CIMObject& addQualifier(const CIMQualifier&);
    Uint32 findQualifier(const CIMName&) const;
    CIMQualifier getQualifier(Uint32);
    CIMConstQualifier getQualifier(Uint32) const;
    void removeQualifier(Uint32);
    Uint32 getQualifierCount() const;
    CIMObject& addProperty(const CIMProperty& x);
    Uint32 findProperty(const CIMName& name) const;
    CIMProperty getProperty(Uint32 index);
    CIMConstProperty getProperty(Uint32 index) const;
    void removeProperty(Uint32 index);
    Uint32 getPropertyCount() const;
    CIMObject clone() const;
    Boolean identical(const CIMConstObject&) const;
    Boolean isUninitialized() const;
    String toString() const;
    Boolean isClass() const;
    Boolean isInstance() const;
};

class CIMConstObject {
public:
    CIMConstObject();
    CIMConstObject(const CIMConstObject&);
    CIMConstObject(const CIMObject&);
    CIMConstObject(const CIMClass&);
    CIMConstObject(const CIMInstance&);
    ~CIMConstObject();
    CIMConstObject& operator=(const CIMConstObject&);
    CIMConstObject& operator=(const CIMObject&);
    const CIMName& getClassName() const;
    const CIMObjectPath& getPath() const;
    Uint32 findQualifier(const CIMName&) const;
    CIMConstQualifier getQualifier(Uint32) const;
    Uint32 getQualifierCount() const;
    Uint32 findProperty(const CIMName& name) const;
    CIMConstProperty getProperty(Uint32 index) const;
    Uint32 getPropertyCount() const;
    CIMObject clone() const;
    Boolean identical(const CIMConstObject&) const;
    Boolean isUninitialized() const;
    String toString() const;
    Boolean isClass() const;
    Boolean isInstance() const;
};

}  // namespace Pegasus
