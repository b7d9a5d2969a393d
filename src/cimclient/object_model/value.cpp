#include <charconv>
#include <string>
#include <type_traits>

#include "Pegasus/Common/CIMValue.h"
#include "object_model/object_text.h"
#include "object_model/utf.h"
#include "object_model/value_body.h"
#include "object_model/value_texts.h"

namespace Pegasus::kalvex {

using detail::ValueAccess;

namespace {

template <class Object>
Object ClonedObject(const Object& object) {
    if (object.isUninitialized()) {
        throw UninitializedObjectException();
    }
    return object.clone();
}

template <class Object>
Array<Object> ClonedObjects(const Array<Object>& objects) {
    Array<Object> clones;
    for (Uint32 i = 0; i < objects.size(); ++i) {
        clones.append(ClonedObject(objects[i]));
    }
    return clones;
}

/// The text of one scalar.
struct AppendText {
    std::string& out;

    void operator()(Boolean x) const { out += x ? "TRUE" : "FALSE"; }
    template <class Integer>
    std::enable_if_t<std::is_integral_v<Integer>> operator()(Integer x) const {
        char digits[24];
        out.append(digits, std::to_chars(digits, digits + sizeof digits, x).ptr);
    }
    void operator()(Real32 x) const { out += detail::RealText(x); }
    void operator()(Real64 x) const { out += detail::RealText(x); }
    void operator()(const Char16& x) const { out += detail::ToUtf8(&x, 1); }
    void operator()(const String& x) const { out += x.utf8(); }
    void operator()(const CIMDateTime& x) const { out += x.toString().utf8(); }
    void operator()(const CIMObjectPath& x) const { out += x.toString().utf8(); }
    void operator()(const CIMObject& x) const { detail::AppendObjectText(out, x); }
    void operator()(const CIMInstance& x) const { detail::AppendObjectText(out, x); }
};

template <class T>
void AppendElements(std::string& out, const Array<T>& elements, const std::vector<bool>* lost) {
    for (Uint32 i = 0; i < elements.size(); ++i) {
        if (lost == nullptr || !(*lost)[i]) {
            AppendText{out}(elements[i]);
        }
        out += ' ';
    }
}

struct SameScalar {
    template <class T>
    bool operator()(const T& x, const T& y) const {
        if constexpr (std::is_base_of_v<detail::ObjectHandle, T>) {
            return x.identical(y);
        } else {
            return x == y;
        }
    }
    template <class T, class U>
    bool operator()(const T&, const U&) const {
        return false;
    }
};

struct SameElements {
    template <class T>
    bool operator()(const Array<T>& x, const Array<T>& y) const {
        if (x.size() != y.size()) {
            return false;
        }
        for (Uint32 i = 0; i < x.size(); ++i) {
            if (!SameScalar()(x[i], y[i])) {
                return false;
            }
        }
        return true;
    }
    template <class T, class U>
    bool operator()(const T&, const U&) const {
        return false;
    }
};

void CheckType(const CIMValue& value, CIMType type, bool is_array) {
    if (value.getType() != type || value.isArray() != is_array) {
        throw TypeMismatchException();
    }
}

template <class T>
void GetScalar(const CIMValue& value, T& x) {
    CheckType(value, detail::kTypeOf<T>, false);
    if (!value.isNull()) {
        x = ValueAccess::ScalarOf<T>(value);
    }
}

template <class T>
void GetArray(const CIMValue& value, Array<T>& x) {
    CheckType(value, detail::kTypeOf<T>, true);
    if (!value.isNull()) {
        x = std::get<Array<T>>(ValueAccess::ElementsOf(value));
    }
}

}  // namespace

CIMValue::CIMValue() = default;
CIMValue::CIMValue(CIMType type, Boolean isArray, Uint32 arraySize)
    : null_array_size_(arraySize), type_(static_cast<Uint8>(type)), is_array_(isArray) {}
CIMValue::CIMValue(const CIMValue&) = default;
CIMValue::CIMValue(CIMValue&&) noexcept = default;
CIMValue::~CIMValue() = default;
CIMValue& CIMValue::operator=(const CIMValue&) = default;
CIMValue& CIMValue::operator=(CIMValue&&) noexcept = default;

// One constructor and one reader for each type, scalar and array.
#define KALVEX_SCALAR(Parameter, T)                                              \
    CIMValue::CIMValue(Parameter x) : CIMValue(ValueAccess::MakeScalar<T>(x)) {} \
    void CIMValue::get(T& x) const { GetScalar(*this, x); }
#define KALVEX_ARRAY(T)                                                               \
    CIMValue::CIMValue(const Array<T>& x) : CIMValue(ValueAccess::MakeArray<T>(x)) {} \
    void CIMValue::get(Array<T>& x) const { GetArray(*this, x); }
#define KALVEX_NUMBER(T) \
    KALVEX_SCALAR(T, T)  \
    KALVEX_ARRAY(T)
#define KALVEX_CLASS(T)        \
    KALVEX_SCALAR(const T&, T) \
    KALVEX_ARRAY(T)

KALVEX_NUMBER(Boolean)
KALVEX_NUMBER(Uint8)
KALVEX_NUMBER(Sint8)
KALVEX_NUMBER(Uint16)
KALVEX_NUMBER(Sint16)
KALVEX_NUMBER(Uint32)
KALVEX_NUMBER(Sint32)
KALVEX_NUMBER(Uint64)
KALVEX_NUMBER(Sint64)
KALVEX_NUMBER(Real32)
KALVEX_NUMBER(Real64)
KALVEX_CLASS(Char16)
KALVEX_CLASS(String)
KALVEX_CLASS(CIMDateTime)
KALVEX_CLASS(CIMObjectPath)

#undef KALVEX_CLASS
#undef KALVEX_NUMBER
#undef KALVEX_ARRAY
#undef KALVEX_SCALAR

// Embedded objects are cloned, so that later changes to the source are not seen in the value.
#define KALVEX_OBJECT(T)                                                                          \
    CIMValue::CIMValue(const T& x) : CIMValue(ValueAccess::MakeScalar(ClonedObject(x))) {}        \
    CIMValue::CIMValue(const Array<T>& x) : CIMValue(ValueAccess::MakeArray(ClonedObjects(x))) {} \
    void CIMValue::get(T& x) const { GetScalar(*this, x); }                                       \
    void CIMValue::get(Array<T>& x) const { GetArray(*this, x); }

KALVEX_OBJECT(CIMObject)
KALVEX_OBJECT(CIMInstance)

#undef KALVEX_OBJECT

void CIMValue::assign(const CIMValue& x) { *this = x; }

void CIMValue::clear() { *this = CIMValue(); }

Boolean CIMValue::typeCompatible(const CIMValue& x) const {
    return getType() == x.getType() && isArray() == x.isArray();
}

Boolean CIMValue::isArray() const { return is_array_; }

Boolean CIMValue::isNull() const { return content_.index() == 0; }

Uint32 CIMValue::getArraySize() const {
    if (!isArray()) {
        return 0;
    }
    if (isNull()) {
        return null_array_size_;
    }
    return std::visit([](const auto& elements) { return elements.size(); },
                      ValueAccess::ElementsOf(*this));
}

CIMType CIMValue::getType() const { return static_cast<CIMType>(type_); }

void CIMValue::setNullValue(CIMType type, Boolean isArray, Uint32 arraySize) {
    *this = CIMValue(type, isArray, arraySize);
}

Boolean CIMValue::equal(const CIMValue& x) const {
    if (!typeCompatible(x) || isNull() != x.isNull()) {
        return false;
    }
    if (isNull()) {
        return true;
    }
    if (isArray()) {
        return std::visit(SameElements(), ValueAccess::ElementsOf(*this),
                          ValueAccess::ElementsOf(x));
    }
    bool same = false;
    ValueAccess::VisitScalar(*this, [&](const auto& own) {
        same = SameScalar()(own, ValueAccess::ScalarOf<std::decay_t<decltype(own)>>(x));
    });
    return same;
}

String CIMValue::toString() const {
    if (isNull()) {
        return {};
    }
    if (const String* own = ValueAccess::TextOf(*this)) {
        return *own;
    }
    std::string text;
    if (isArray()) {
        const std::vector<bool>* lost = ValueAccess::LostOf(*this);
        std::visit([&](const auto& elements) { AppendElements(text, elements, lost); },
                   ValueAccess::ElementsOf(*this));
    } else {
        ValueAccess::VisitScalar(*this, AppendText{text});
    }
    return String::FromUtf8(text);
}

}  // namespace Pegasus::kalvex
