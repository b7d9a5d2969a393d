// Typed CIM values (DSP0004): scalars and arrays, null or not.
#pragma once

#include <variant>

#include "Pegasus/Common/Array.h"
#include "Pegasus/Common/CIMDateTime.h"
#include "Pegasus/Common/CIMObjectPath.h"
#include "Pegasus/Common/CIMType.h"
#include "Pegasus/Common/Char16.h"
#include "Pegasus/Common/String.h"

PEGASUS_NAMESPACE_BEGIN

class CIMObject;
class CIMInstance;

namespace detail {
struct ValueBody;
class ValueAccess;
}  // namespace detail

/// A value; copies share their content. A default object is a null boolean.
class CIMValue {
public:
    CIMValue();
    CIMValue(CIMType type, Boolean isArray, Uint32 arraySize = 0);
    CIMValue(Boolean x);
    CIMValue(Uint8 x);
    CIMValue(Sint8 x);
    CIMValue(Uint16 x);
    CIMValue(Sint16 x);
    CIMValue(Uint32 x);
    CIMValue(Sint32 x);
    CIMValue(Uint64 x);
    CIMValue(Sint64 x);
    CIMValue(Real32 x);
    CIMValue(Real64 x);
    CIMValue(const Char16& x);
    CIMValue(const String& x);
    CIMValue(const CIMDateTime& x);
    CIMValue(const CIMObjectPath& x);
    CIMValue(const CIMObject& x);
    CIMValue(const CIMInstance& x);
    CIMValue(const Array<Boolean>& x);
    CIMValue(const Array<Uint8>& x);
    CIMValue(const Array<Sint8>& x);
    CIMValue(const Array<Uint16>& x);
    CIMValue(const Array<Sint16>& x);
    CIMValue(const Array<Uint32>& x);
    CIMValue(const Array<Sint32>& x);
    CIMValue(const Array<Uint64>& x);
    CIMValue(const Array<Sint64>& x);
    CIMValue(const Array<Real32>& x);
    CIMValue(const Array<Real64>& x);
    CIMValue(const Array<Char16>& x);
    CIMValue(const Array<String>& x);
    CIMValue(const Array<CIMDateTime>& x);
    CIMValue(const Array<CIMObjectPath>& x);
    CIMValue(const Array<CIMObject>& x);
    CIMValue(const Array<CIMInstance>& x);
    CIMValue(const CIMValue& x);
    CIMValue(CIMValue&& x) noexcept;
    ~CIMValue();
    CIMValue& operator=(const CIMValue& x);
    CIMValue& operator=(CIMValue&& x) noexcept;

    void assign(const CIMValue& x);
    void clear();
    /// Equal type and array flag.
    Boolean typeCompatible(const CIMValue& x) const;
    Boolean isArray() const;
    Boolean isNull() const;
    Uint32 getArraySize() const;
    CIMType getType() const;
    void setNullValue(CIMType type, Boolean isArray, Uint32 arraySize = 0);

    template <class T>
    void set(const T& x) {
        *this = CIMValue(x);
    }

    /// A value of another type throws TypeMismatchException; a null one leaves `x` unchanged.
    void get(Boolean& x) const;
    void get(Uint8& x) const;
    void get(Sint8& x) const;
    void get(Uint16& x) const;
    void get(Sint16& x) const;
    void get(Uint32& x) const;
    void get(Sint32& x) const;
    void get(Uint64& x) const;
    void get(Sint64& x) const;
    void get(Real32& x) const;
    void get(Real64& x) const;
    void get(Char16& x) const;
    void get(String& x) const;
    void get(CIMDateTime& x) const;
    void get(CIMObjectPath& x) const;
    void get(CIMObject& x) const;
    void get(CIMInstance& x) const;
    void get(Array<Boolean>& x) const;
    void get(Array<Uint8>& x) const;
    void get(Array<Sint8>& x) const;
    void get(Array<Uint16>& x) const;
    void get(Array<Sint16>& x) const;
    void get(Array<Uint32>& x) const;
    void get(Array<Sint32>& x) const;
    void get(Array<Uint64>& x) const;
    void get(Array<Sint64>& x) const;
    void get(Array<Real32>& x) const;
    void get(Array<Real64>& x) const;
    void get(Array<Char16>& x) const;
    void get(Array<String>& x) const;
    void get(Array<CIMDateTime>& x) const;
    void get(Array<CIMObjectPath>& x) const;
    void get(Array<CIMObject>& x) const;
    void get(Array<CIMInstance>& x) const;

    Boolean equal(const CIMValue& x) const;
    /// Empty for null; a blank after each element of an array.
    String toString() const;

private:
    friend class detail::ValueAccess;
    /// Nothing for null; numbers and characters as their bytes; arrays and objects in a body.
    std::variant<std::monostate, Uint64, String, CIMDateTime, detail::Shared<detail::ValueBody>>
        content_;
    Uint32 null_array_size_ = 0;
    Uint8 type_ = CIMTYPE_BOOLEAN;
    Boolean is_array_ = false;
};

inline Boolean operator==(const CIMValue& x, const CIMValue& y) { return x.equal(y); }
inline Boolean operator!=(const CIMValue& x, const CIMValue& y) { return !x.equal(y); }

PEGASUS_NAMESPACE_END
