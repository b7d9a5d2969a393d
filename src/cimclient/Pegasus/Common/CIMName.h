// Names of classes, properties, qualifiers and keys, and of namespaces (DSP0004). Compared without
// regard to case. Construction from an illegal text throws; a default-constructed name is null.
//
// Assignment of a String is there so that assigning a plain text is ambiguous, as it is with
// another client of this API.
#pragma once

#include "Pegasus/Common/String.h"

PEGASUS_NAMESPACE_BEGIN

class CIMName {
public:
    CIMName() = default;
    CIMName(const String& name);
    CIMName(const char* name);
    CIMName& operator=(const String& name) { return *this = CIMName(name); }

    const String& getString() const { return name_; }
    Boolean isNull() const { return name_.utf8().empty(); }

    /// For the client's own rooms: a name whose text is known to be legal, or is a key without
    /// name.
    static CIMName Unchecked(const String& name);

private:
    String name_;
};

Boolean operator==(const CIMName& name1, const CIMName& name2);

/// Plain names joined by "/"; one leading "/" is dropped.
class CIMNamespaceName {
public:
    CIMNamespaceName() = default;
    CIMNamespaceName(const String& name);
    CIMNamespaceName(const char* name);
    CIMNamespaceName& operator=(const String& name) { return *this = CIMNamespaceName(name); }

    const String& getString() const { return name_; }
    Boolean isNull() const { return name_.utf8().empty(); }

private:
    String name_;
};

PEGASUS_NAMESPACE_END
