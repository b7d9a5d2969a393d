#pragma once

#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMType.h>

namespace Pegasus {

class CIMValue {
public:
    CIMValue();
    CIMValue(CIMType type, Boolean isArray, Uint32 arraySize = 0);
    CIMValue(const CIMValue&);
    ~CIMValue();
    CIMValue& operator=(const CIMValue&);

#define DECLARE_VALUES_OF(T, Argument) \
    CIMValue(Argument x);              \
    CIMValue(const Array<T>& x);       \
    void set(Argument x);              \
    void set(const Array<T>& x);       \
    void get(T& x) const;              \
    void get(Array<T>& x) const
    DECLARE_VALUES_OF(Boolean, Boolean);
    DECLARE_VALUES_OF(Uint8, Uint8);
    DECLARE_VALUES_OF(Sint8, Sint8);
    DECLARE_VALUES_OF(Uint16, Uint16);
    DECLARE_VALUES_OF(Sint16, Sint16);
    DECLARE_VALUES_OF(Uint32, Uint32);
    DECLARE_VALUES_OF(Sint32, Sint32);
    DECLARE_VALUES_OF(Uint64, Uint64);
    DECLARE_VALUES_OF(Sint64, Sint64);
    DECLARE_VALUES_OF(Real32, Real32);
    DECLARE_VALUES_OF(Real64, Real64);
    DECLARE_VALUES_OF(Char16, const Char16&);
    DECLARE_VALUES_OF(String, const String&);
    DECLARE_VALUES_OF(CIMDateTime, const CIMDateTime&);
    DECLARE_VALUES_OF(CIMObjectPath, const CIMObjectPath&);
    DECLARE_VALUES_OF(CIMObject, const CIMObject&);
    DECLARE_VALUES_OF(CIMInstance, const CIMInstance&);
#undef DECLARE_VALUES_OF

    void assign(const CIMValue&);
    void clear();
    Boolean typeCompatible(const CIMValue& x) const;
    Boolean isArray() const;
    Boolean isNull() const;
    Uint32 getArraySize() const;
    CIMType getType() const;
    void setNullValue(CIMType type, Boolean isArray, Uint32 arraySize = 0);
    Boolean equal(const CIMValue& x) const;
    String toString() const;
};
Boolean operator==(const CIMValue&, const CIMValue&);
Boolean operator!=(const CIMValue&, const CIMValue&);

}  // namespace Pegasus
