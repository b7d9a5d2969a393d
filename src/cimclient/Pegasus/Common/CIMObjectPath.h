// Paths of CIM objects (DSP0004) in the form //host/namespace:Class.key=value,key=value.
#pragma once

#include "Pegasus/Common/Array.h"
#include "Pegasus/Common/CIMName.h"
#include "Pegasus/Common/String.h"

PEGASUS_NAMESPACE_BEGIN

class CIMValue;

class CIMKeyBinding {
public:
    enum Type { BOOLEAN, STRING, NUMERIC, REFERENCE };

    CIMKeyBinding() = default;
    CIMKeyBinding(const CIMName& name, const String& value, Type type);
    /// Arrays and embedded objects throw TypeMismatchException.
    CIMKeyBinding(const CIMName& name, const CIMValue& value);

    const CIMName& getName() const { return name_; }
    void setName(const CIMName& name) { name_ = name; }
    const String& getValue() const { return value_; }
    void setValue(const String& value) { value_ = value; }
    Type getType() const { return type_; }
    void setType(Type type) { type_ = type; }
    Boolean equal(CIMValue value);

private:
    CIMName name_;
    String value_;
    Type type_ = NUMERIC;
};

Boolean operator==(const CIMKeyBinding& x, const CIMKeyBinding& y);

/// A value. Keys are kept sorted by name. A text or host in another form throws
/// MalformedObjectNameException.
class CIMObjectPath {
public:
    CIMObjectPath();
    CIMObjectPath(const CIMObjectPath& x);
    CIMObjectPath(const String& objectName);
    CIMObjectPath(const String& host, const CIMNamespaceName& nameSpace, const CIMName& className,
                  const Array<CIMKeyBinding>& keyBindings = Array<CIMKeyBinding>());
    ~CIMObjectPath();
    CIMObjectPath& operator=(const CIMObjectPath& x);
    CIMObjectPath& operator=(const String& objectName);

    void clear();
    void set(const String& host, const CIMNamespaceName& nameSpace, const CIMName& className,
             const Array<CIMKeyBinding>& keyBindings = Array<CIMKeyBinding>());
    void set(const String& objectName);
    const String& getHost() const;
    void setHost(const String& host);
    const CIMNamespaceName& getNameSpace() const;
    void setNameSpace(const CIMNamespaceName& nameSpace);
    const CIMName& getClassName() const;
    void setClassName(const CIMName& className);
    const Array<CIMKeyBinding>& getKeyBindings() const;
    void setKeyBindings(const Array<CIMKeyBinding>& keyBindings);

    String toString() const;
    Boolean identical(const CIMObjectPath& x) const;
    /// Equal paths have equal codes.
    Uint32 makeHashCode() const;

private:
    struct Body;
    Body& Editable();
    detail::Shared<Body> body_;  ///< null for the empty path
};

Boolean operator==(const CIMObjectPath& x, const CIMObjectPath& y);
Boolean operator!=(const CIMObjectPath& x, const CIMObjectPath& y);

PEGASUS_NAMESPACE_END
