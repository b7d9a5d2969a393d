#pragma once

#include <Pegasus/Common/Array.h>

namespace Pegasus {

class CIMName {
public:
    CIMName();
    CIMName(const String& name);
    CIMName(const char* name);
    CIMName& operator=(const CIMName& name);
    CIMName& operator=(const String& name);
    const String& getString() const;
    Boolean isNull() const;
    void clear();
    Boolean equal(const CIMName& name) const;
    static Boolean legal(const String& name);
};
Boolean operator==(const CIMName&, const CIMName&);
Boolean operator!=(const CIMName&, const CIMName&);

class CIMNamespaceName {
public:
    CIMNamespaceName();
    CIMNamespaceName(const String& name);
    CIMNamespaceName(const char* name);
    CIMNamespaceName& operator=(const CIMNamespaceName& name);
    CIMNamespaceName& operator=(const String& name);
    const String& getString() const;
    Boolean isNull() const;
    void clear();
    Boolean equal(const CIMNamespaceName& name) const;
    static Boolean legal(const String& name);
};
Boolean operator==(const CIMNamespaceName&, const CIMNamespaceName&);
Boolean operator!=(const CIMNamespaceName&, const CIMNamespaceName&);

}  // namespace Pegasus
