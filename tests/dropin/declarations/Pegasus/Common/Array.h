#pragma once

#include <Pegasus/Common/String.h>

namespace Pegasus {

/// Only for the element types that an installed library holds arrays of: one of any other would
/// compile there and not link.
template <class T>
struct ArrayElement;

#define DECLARE_ARRAY_ELEMENT(T) \
    class T;                     \
    template <>                  \
    struct ArrayElement<T> {}
template <>
struct ArrayElement<Boolean> {};
template <>
struct ArrayElement<Uint8> {};
template <>
struct ArrayElement<Sint8> {};
template <>
struct ArrayElement<Uint16> {};
template <>
struct ArrayElement<Sint16> {};
template <>
struct ArrayElement<Uint32> {};
template <>
struct ArrayElement<Sint32> {};
template <>
struct ArrayElement<Uint64> {};
template <>
struct ArrayElement<Sint64> {};
template <>
struct ArrayElement<Real32> {};
template <>
struct ArrayElement<Real64> {};
DECLARE_ARRAY_ELEMENT(Char16);
DECLARE_ARRAY_ELEMENT(String);
DECLARE_ARRAY_ELEMENT(CIMName);
DECLARE_ARRAY_ELEMENT(CIMNamespaceName);
DECLARE_ARRAY_ELEMENT(CIMDateTime);
DECLARE_ARRAY_ELEMENT(CIMKeyBinding);
DECLARE_ARRAY_ELEMENT(CIMObjectPath);
DECLARE_ARRAY_ELEMENT(CIMValue);
DECLARE_ARRAY_ELEMENT(CIMQualifier);
DECLARE_ARRAY_ELEMENT(CIMProperty);
DECLARE_ARRAY_ELEMENT(CIMObject);
DECLARE_ARRAY_ELEMENT(CIMInstance);
#undef DECLARE_ARRAY_ELEMENT

template <class T>
class Array : private ArrayElement<T> {
public:
    Array();
    Array(const Array<T>& x);
    Array(Uint32 size);
    Array(Uint32 size, const T& x);
    Array(const T* items, Uint32 size);
    ~Array();
    Array<T>& operator=(const Array<T>& x);
    void clear();
    void reserveCapacity(Uint32 capacity);
    void grow(Uint32 size, const T& x);
    void swap(Array<T>& x);
    Uint32 size() const;
    Uint32 getCapacity() const;
    const T* getData() const;
    T& operator[](Uint32 index);
    const T& operator[](Uint32 index) const;
    void append(const T& x);
    void append(const T* x, Uint32 size);
    void appendArray(const Array<T>& x);
    void prepend(const T& x);
    void prepend(const T* x, Uint32 size);
    void insert(Uint32 index, const T& x);
    void insert(Uint32 index, const T* x, Uint32 size);
    void remove(Uint32 index);
    void remove(Uint32 index, Uint32 size);
};

}  // namespace Pegasus
