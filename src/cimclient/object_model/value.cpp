#include <string>
#include <type_traits>

#include "Pegasus/Common/CIMValue.h"
#include "object_model/object_text.h"
#include "object_model/utf.h"
#include "object_model/value_body.h"
#include "object_model/value_texts.h"

namespace Pegasus::kalvex {

using detail::Elements;
using detail::Scalar;
using detail::Shared;
using detail::ValueBody;

namespace {

Shared<ValueBody> ScalarBody(Scalar scalar) {
    return Shared<ValueBody>(new ValueBody(std::move(scalar)));
}

Shared<ValueBody> ArrayBody(Elements elements) {
    return Shared<ValueBody>(new ValueBody(std::move(elements)));
}

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
        out += std::to_string(x);
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

/// The content of the asked type, or null when the value is null.
template <class Family, class T>
const T* ContentOf(const ValueBody* body, CIMType type) {
    constexpr bool is_array = std::is_same_v<Family, Elements>;
    const CIMType own_type = body != nullptr ? body->type : CIMTYPE_BOOLEAN;
    const bool own_array = body != nullptr && body->is_array;
    if (own_type != type || own_array != is_array) {
        throw TypeMismatchException();
    }
    return body == nullptr || body->is_null ? nullptr
                                            : &std::get<T>(std::get<Family>(body->content));
}

template <class Family, class T>
void Get(const ValueBody* body, T& x) {
    static const auto type = static_cast<CIMType>(Family(T()).index());
    if (const T* content = ContentOf<Family, T>(body, type)) {
        x = *content;
    }
}

}  // namespace

CIMValue::CIMValue() = default;
CIMValue::CIMValue(CIMType type, Boolean isArray, Uint32 arraySize)
    : body_(new ValueBody(type, isArray, arraySize)) {}
CIMValue::CIMValue(const CIMValue&) = default;
CIMValue::CIMValue(CIMValue&&) noexcept = default;
CIMValue::~CIMValue() = default;
CIMValue& CIMValue::operator=(const CIMValue&) = default;
CIMValue& CIMValue::operator=(CIMValue&&) noexcept = default;

// One constructor and one reader for each type, scalar and array.
#define KALVEX_SCALAR(Parameter, T)                                      \
    CIMValue::CIMValue(Parameter x) : body_(ScalarBody(Scalar(T(x)))) {} \
    void CIMValue::get(T& x) const { Get<Scalar>(body_.get(), x); }
#define KALVEX_ARRAY(T)                                                      \
    CIMValue::CIMValue(const Array<T>& x) : body_(ArrayBody(Elements(x))) {} \
    void CIMValue::get(Array<T>& x) const { Get<Elements>(body_.get(), x); }
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
CIMValue::CIMValue(const CIMObject& x) : body_(ScalarBody(ClonedObject(x))) {}
CIMValue::CIMValue(const CIMInstance& x) : body_(ScalarBody(ClonedObject(x))) {}
CIMValue::CIMValue(const Array<CIMObject>& x) : body_(ArrayBody(ClonedObjects(x))) {}
CIMValue::CIMValue(const Array<CIMInstance>& x) : body_(ArrayBody(ClonedObjects(x))) {}

void CIMValue::get(CIMObject& x) const { Get<Scalar>(body_.get(), x); }
void CIMValue::get(CIMInstance& x) const { Get<Scalar>(body_.get(), x); }
void CIMValue::get(Array<CIMObject>& x) const { Get<Elements>(body_.get(), x); }
void CIMValue::get(Array<CIMInstance>& x) const { Get<Elements>(body_.get(), x); }

void CIMValue::assign(const CIMValue& x) { *this = x; }

void CIMValue::clear() { body_ = {}; }

Boolean CIMValue::typeCompatible(const CIMValue& x) const {
    return getType() == x.getType() && isArray() == x.isArray();
}

Boolean CIMValue::isArray() const { return body_ && body_->is_array; }

Boolean CIMValue::isNull() const { return !body_ || body_->is_null; }

Uint32 CIMValue::getArraySize() const {
    if (!isArray()) {
        return 0;
    }
    if (isNull()) {
        return body_->null_array_size;
    }
    return std::visit([](const auto& elements) { return elements.size(); },
                      std::get<Elements>(body_->content));
}

CIMType CIMValue::getType() const { return body_ ? body_->type : CIMTYPE_BOOLEAN; }

void CIMValue::setNullValue(CIMType type, Boolean isArray, Uint32 arraySize) {
    *this = CIMValue(type, isArray, arraySize);
}

Boolean CIMValue::equal(const CIMValue& x) const {
    if (!typeCompatible(x) || isNull() != x.isNull()) {
        return false;
    }
    if (isNull() || body_.get() == x.body_.get()) {
        return true;
    }
    if (isArray()) {
        return std::visit(SameElements(), std::get<Elements>(body_->content),
                          std::get<Elements>(x.body_->content));
    }
    return std::visit(SameScalar(), std::get<Scalar>(body_->content),
                      std::get<Scalar>(x.body_->content));
}

String CIMValue::toString() const {
    if (isNull()) {
        return {};
    }
    if (const auto* scalar = std::get_if<Scalar>(&body_->content)) {
        if (const auto* text = std::get_if<String>(scalar)) {
            return *text;
        }
    }
    std::string text;
    if (isArray()) {
        std::visit([&](const auto& elements) { AppendElements(text, elements, body_->lost.get()); },
                   std::get<Elements>(body_->content));
    } else {
        std::visit(AppendText{text}, std::get<Scalar>(body_->content));
    }
    return String::FromUtf8(text);
}

}  // namespace Pegasus::kalvex
