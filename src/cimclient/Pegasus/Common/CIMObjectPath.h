// Paths of CIM objects (DSP0004) in the form //host/namespace:Class.key=value,key=value.
#pragma once

#include "Pegasus/Common/Array.h"
#include "Pegasus/Common/CIMName.h"
#include "Pegasus/Common/String.h"

PEGASUS_NAMESPACE_BEGIN

class CIMKeyBinding {
public:
    enum Type { BOOLEAN, STRING, NUMERIC, REFERENCE };

    CIMKeyBinding(const CIMName& name, const String& value, Type type)
        : name_(name), value_(value), type_(type) {}

    const CIMName& getName() const { return name_; }
    const String& getValue() const { return value_; }
    Type getType() const { return type_; }

private:
    CIMName name_;
    String value_;
    Type type_;
};

/// A value. Keys are kept sorted by name. A text or host in another form throws
/// MalformedObjectNameException.
class CIMObjectPath {
public:
    CIMObjectPath() = default;
    CIMObjectPath(const String& objectName);
    CIMObjectPath(const String& host, const CIMNamespaceName& nameSpace, const CIMName& className,
                  const Array<CIMKeyBinding>& keyBindings = Array<CIMKeyBinding>());

    const CIMName& getClassName() const { return class_name_; }
    const Array<CIMKeyBinding>& getKeyBindings() const { return keys_; }
    String toString() const;

private:
    String host_;
    CIMNamespaceName name_space_;
    CIMName class_name_;
    Array<CIMKeyBinding> keys_;
};

PEGASUS_NAMESPACE_END
