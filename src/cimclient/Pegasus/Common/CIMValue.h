// Typed CIM values (DSP0004): scalars and arrays, null or not.
#pragma once

#include "Pegasus/Common/Array.h"
#include "Pegasus/Common/CIMType.h"
#include "Pegasus/Common/String.h"

PEGASUS_NAMESPACE_BEGIN

namespace detail {
struct ValueBody;
class ValueAccess;
}  // namespace detail

/// A value; copies share their content. A default object is a null boolean.
class CIMValue {
public:
    CIMValue();
    /// Null.
    CIMValue(CIMType type, Boolean isArray);
    CIMValue(Boolean x);
    CIMValue(Uint16 x);
    CIMValue(Uint32 x);
    CIMValue(Uint64 x);
    CIMValue(const String& x);
    CIMValue(const Array<String>& x);
    CIMValue(const CIMValue& x);
    CIMValue(CIMValue&& x) noexcept;
    ~CIMValue();
    CIMValue& operator=(const CIMValue& x);
    CIMValue& operator=(CIMValue&& x) noexcept;

    CIMType getType() const { return type_; }
    Boolean isArray() const { return is_array_; }
    Boolean isNull() const { return is_null_; }
    /// A value of another type throws TypeMismatchException; a null one leaves `x` unchanged.
    void get(Array<String>& x) const;
    /// Empty for null; a blank after each element of an array.
    String toString() const;

private:
    friend class detail::ValueAccess;
    String text_;  ///< what a scalar prints as, unless it is an object
    detail::Shared<detail::ValueBody> body_;
    CIMType type_ = CIMTYPE_BOOLEAN;
    Boolean is_array_ = false;
    Boolean is_null_ = true;
};

PEGASUS_NAMESPACE_END
