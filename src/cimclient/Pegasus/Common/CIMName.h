// Names of classes, properties, qualifiers and keys, and of namespaces (DSP0004). Compared without
// regard to case. Construction from an illegal text throws; a default-constructed name is null.
#pragma once

#include "Pegasus/Common/Array.h"
#include "Pegasus/Common/String.h"

PEGASUS_NAMESPACE_BEGIN

class CIMName {
public:
    CIMName() = default;
    CIMName(const String& name);
    CIMName(const char* name);
    CIMName& operator=(const String& name);
    CIMName& operator=(const char* name);

    const String& getString() const { return name_; }
    Boolean isNull() const { return name_.utf8().empty(); }
    void clear() { name_.clear(); }
    Boolean equal(const CIMName& name) const { return String::equalNoCase(name_, name.name_); }
    Boolean equal(const char* name) const;
    static Boolean legal(const String& name);

    /// For the client's own rooms: a name whose text is known to be legal, or is a key without
    /// name.
    static CIMName Unchecked(const String& name);

private:
    String name_;
};

inline Boolean operator==(const CIMName& name1, const CIMName& name2) { return name1.equal(name2); }
inline Boolean operator!=(const CIMName& name1, const CIMName& name2) {
    return !name1.equal(name2);
}
Boolean operator==(const CIMName& name1, const char* name2);
Boolean operator==(const char* name1, const CIMName& name2);
Boolean operator!=(const CIMName& name1, const char* name2);
Boolean operator!=(const char* name1, const CIMName& name2);

/// Plain names joined by "/"; one leading "/" is dropped.
class CIMNamespaceName {
public:
    CIMNamespaceName() = default;
    CIMNamespaceName(const String& name);
    CIMNamespaceName(const char* name);
    CIMNamespaceName& operator=(const String& name);
    CIMNamespaceName& operator=(const char* name);

    const String& getString() const { return name_; }
    Boolean isNull() const { return name_.utf8().empty(); }
    void clear() { name_.clear(); }
    Boolean equal(const CIMNamespaceName& name) const {
        return String::equalNoCase(name_, name.name_);
    }
    Boolean equal(const char* name) const;
    static Boolean legal(const String& name);

private:
    String name_;
};

inline Boolean operator==(const CIMNamespaceName& name1, const CIMNamespaceName& name2) {
    return name1.equal(name2);
}
inline Boolean operator!=(const CIMNamespaceName& name1, const CIMNamespaceName& name2) {
    return !name1.equal(name2);
}
Boolean operator==(const CIMNamespaceName& name1, const char* name2);
Boolean operator==(const char* name1, const CIMNamespaceName& name2);
Boolean operator!=(const CIMNamespaceName& name1, const char* name2);
Boolean operator!=(const char* name1, const CIMNamespaceName& name2);

PEGASUS_NAMESPACE_END
