#pragma once

#include <Pegasus/Common/CIMName.h>

namespace Pegasus {

class CIMKeyBinding {
public:
    enum Type { BOOLEAN, STRING, NUMERIC, REFERENCE };
    CIMKeyBinding();
    CIMKeyBinding(const CIMKeyBinding&);
    CIMKeyBinding(const CIMName& name, const String& value, Type type);
    CIMKeyBinding(const CIMName& name, const CIMValue& value);
    ~CIMKeyBinding();
    CIMKeyBinding& operator=(const CIMKeyBinding&);
    const CIMName& getName() const;
    void setName(const CIMName& name);
    const String& getValue() const;
    void setValue(const String& value);
    Type getType() const;
    void setType(Type type);
    Boolean equal(CIMValue value);
};
Boolean operator==(const CIMKeyBinding&, const CIMKeyBinding&);

class CIMObjectPath {
public:
    CIMObjectPath();
    CIMObjectPath(const CIMObjectPath&);
    CIMObjectPath(const String& objectName);
    CIMObjectPath(const String& host, const CIMNamespaceName& nameSpace, const CIMName& className,
                  const Array<CIMKeyBinding>& keyBindings = Array<CIMKeyBinding>());
    ~CIMObjectPath();
    CIMObjectPath& operator=(const CIMObjectPath&);
    CIMObjectPath& operator=(const String& objectName);
    void clear();
    void set(const String& host, const CIMNamespaceName& nameSpace, const CIMName& className,
             const Array<CIMKeyBinding>& keyBindings = Array<CIMKeyBinding>());
    void set(const String& objectName);
    const String& getHost() const;
    void setHost(const String& host);
    const CIMNamespaceName& getNameSpace() const;
    void setNameSpace(const CIMNamespaceName&);
    const CIMName& getClassName() const;
    void setClassName(const CIMName&);
    const Array<CIMKeyBinding>& getKeyBindings() const;
    void setKeyBindings(const Array<CIMKeyBinding>&);
    String toString() const;
    Boolean identical(const CIMObjectPath& x) const;
    Uint32 makeHashCode() const;
};
Boolean operator==(const CIMObjectPath&, const CIMObjectPath&);
Boolean operator!=(const CIMObjectPath&, const CIMObjectPath&);

}  // namespace Pegasus
