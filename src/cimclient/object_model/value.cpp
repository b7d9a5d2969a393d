#include <string>

#include "Pegasus/Common/CIMValue.h"
#include "object_model/object_text.h"
#include "object_model/value_body.h"
#include "object_model/value_texts.h"

namespace Pegasus::kalvex {

using detail::ValueAccess;
using detail::ValueBody;

namespace {

CIMValue NumberValue(CIMType type, Uint64 number) {
    return ValueAccess::MakeScalar(type, String::FromUtf8(std::to_string(number)));
}

detail::Shared<ValueBody> BodyOfTexts(const Array<String>& texts) {
    detail::Shared<ValueBody> body(new ValueBody);
    body->texts = texts;
    return body;
}

}  // namespace

CIMValue::CIMValue() = default;
CIMValue::CIMValue(CIMType type, Boolean isArray) : type_(type), is_array_(isArray) {}
CIMValue::CIMValue(Boolean x)
    : CIMValue(ValueAccess::MakeScalar(CIMTYPE_BOOLEAN, detail::BooleanText(x))) {}
CIMValue::CIMValue(Uint16 x) : CIMValue(NumberValue(CIMTYPE_UINT16, x)) {}
CIMValue::CIMValue(Uint32 x) : CIMValue(NumberValue(CIMTYPE_UINT32, x)) {}
CIMValue::CIMValue(Uint64 x) : CIMValue(NumberValue(CIMTYPE_UINT64, x)) {}
CIMValue::CIMValue(const String& x) : CIMValue(ValueAccess::MakeScalar(CIMTYPE_STRING, x)) {}
CIMValue::CIMValue(const Array<String>& x)
    : CIMValue(ValueAccess::MakeArray(CIMTYPE_STRING, BodyOfTexts(x))) {}
CIMValue::CIMValue(const CIMValue&) = default;
CIMValue::CIMValue(CIMValue&&) noexcept = default;
CIMValue::~CIMValue() = default;
CIMValue& CIMValue::operator=(const CIMValue&) = default;
CIMValue& CIMValue::operator=(CIMValue&&) noexcept = default;

void CIMValue::get(Array<String>& x) const {
    if (type_ != CIMTYPE_STRING || !is_array_) {
        throw TypeMismatchException();
    }
    if (!is_null_) {
        x = body_->texts;
    }
}

String CIMValue::toString() const { return body_ ? detail::TextOfContent(*this) : text_; }

}  // namespace Pegasus::kalvex
