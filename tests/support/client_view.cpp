#include "support/client_view.h"

namespace support {

using namespace Pegasus;

namespace {

template <class Object>
std::string Property(const Object& object, Uint32 index) {
    const CIMConstProperty property = object.getProperty(index);
    return "  " + TextOf(property.getName().getString()) + " = [" +
           TextOf(property.getValue().toString()) + "]";
}

std::string Failure(const char* name, const Exception& failure) {
    return std::string(name) + " [" + TextOf(failure.getMessage()) + "]";
}

template <class Coded>
std::string CodedFailure(const char* name, const Coded& failure) {
    const std::string code = std::to_string(static_cast<int>(failure.getCode()));
    return Failure((name + (" " + code)).c_str(), failure);
}

/// The names of the types, in the order of CIMType.
constexpr const char* kTypeNames[] = {
    "boolean", "uint8",  "sint8",  "uint16", "sint16",   "uint32",    "sint32", "uint64",  "sint64",
    "real32",  "real64", "char16", "string", "datetime", "reference", "object", "instance"};

/// The failure's text when it is of the class, else empty.
template <class Class>
std::string FailureIf(const char* name, const Exception& failure) {
    return dynamic_cast<const Class*>(&failure) != nullptr ? Failure(name, failure) : "";
}

std::string FailureText(const Exception& failure) {
    if (const auto* error = dynamic_cast<const CIMException*>(&failure)) {
        return CodedFailure("CIMException", *error);
    }
    if (const auto* error = dynamic_cast<const CIMClientHTTPErrorException*>(&failure)) {
        return CodedFailure("CIMClientHTTPErrorException", *error);
    }
    const std::string texts[] = {
        FailureIf<CIMClientMalformedHTTPException>("CIMClientMalformedHTTPException", failure),
        FailureIf<CIMClientXmlException>("CIMClientXmlException", failure),
        FailureIf<CIMClientResponseException>("CIMClientResponseException", failure),
        FailureIf<ConnectionTimeoutException>("ConnectionTimeoutException", failure),
        FailureIf<CannotConnectException>("CannotConnectException", failure),
        FailureIf<NotConnectedException>("NotConnectedException", failure),
        FailureIf<AlreadyConnectedException>("AlreadyConnectedException", failure),
        FailureIf<InvalidLocatorException>("InvalidLocatorException", failure),
        FailureIf<InvalidNamespaceNameException>("InvalidNamespaceNameException", failure),
        FailureIf<SSLException>("SSLException", failure),
        FailureIf<InvalidNameException>("InvalidNameException", failure),
        FailureIf<MalformedObjectNameException>("MalformedObjectNameException", failure),
        FailureIf<TypeMismatchException>("TypeMismatchException", failure),
        FailureIf<UninitializedObjectException>("UninitializedObjectException", failure),
        FailureIf<IndexOutOfBoundsException>("IndexOutOfBoundsException", failure),
        FailureIf<AlreadyExistsException>("AlreadyExistsException", failure),
    };
    for (const std::string& text : texts) {
        if (!text.empty()) {
            return text;
        }
    }
    return Failure("Exception", failure);
}

}  // namespace

std::string TextOf(const String& text) { return std::string(text.getCString()); }

std::string ViewOf(const CIMInstance& instance) {
    std::string view = TextOf(instance.getPath().toString()) + "\n";
    for (Uint32 i = 0; i < instance.getPropertyCount(); ++i) {
        view += Property(instance, i) + "\n";
    }
    return view;
}

std::string ViewOf(const CIMObject& object) {
    std::string view = TextOf(object.getPath().toString()) + "\n";
    for (Uint32 i = 0; i < object.getPropertyCount(); ++i) {
        const CIMConstProperty property = object.getProperty(i);
        const Uint32 qualifiers = property.getQualifierCount();
        view += Property(object, i) + " quals=" + std::to_string(qualifiers) + "\n";
    }
    return view;
}

std::string ViewOf(const CIMValue& value) {
    const std::string type = kTypeNames[value.getType()] + std::string(value.isArray() ? "[]" : "");
    return type + (value.isNull() ? " null" : " [" + TextOf(value.toString()) + "]");
}

std::string FailureOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const Exception& failure) {
        return FailureText(failure);
    }
    return "nothing thrown";
}

}  // namespace support
