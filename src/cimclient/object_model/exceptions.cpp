#include <string>
#include <vector>

#include "Pegasus/Client/CIMClientException.h"
#include "Pegasus/Common/Array.h"
#include "Pegasus/Common/CIMInstance.h"
#include "Pegasus/Common/Exception.h"

namespace Pegasus::kalvex {

Exception::Exception() = default;
Exception::Exception(const String& message) : message_(message) {}
Exception::Exception(const Exception&) = default;
Exception::~Exception() = default;
Exception& Exception::operator=(const Exception&) = default;

const String& Exception::getMessage() const { return message_; }

struct CIMException::Errors {
    std::vector<CIMInstance> instances;
};

CIMException::CIMException(CIMStatusCode code, const String& message)
    : Exception(message), code_(code), errors_(new Errors) {}

CIMException::CIMException(CIMStatusCode code, const String& message, const CIMInstance& instance)
    : CIMException(code, message) {
    addError(instance);
}

CIMException::CIMException(CIMStatusCode code, const String& message,
                           const Array<CIMInstance>& instances)
    : CIMException(code, message) {
    for (Uint32 i = 0; i < instances.size(); ++i) {
        addError(instances[i]);
    }
}

CIMException::CIMException(const CIMException& exception)
    : Exception(exception), code_(exception.code_), errors_(new Errors(*exception.errors_)) {}

CIMException& CIMException::operator=(const CIMException& exception) {
    Exception::operator=(exception);
    code_ = exception.code_;
    *errors_ = *exception.errors_;
    return *this;
}

CIMException::~CIMException() { delete errors_; }

CIMStatusCode CIMException::getCode() const { return code_; }

Uint32 CIMException::getErrorCount() const {
    return static_cast<Uint32>(errors_->instances.size());
}

CIMConstInstance CIMException::getError(Uint32 index) const {
    if (index >= getErrorCount()) {
        throw IndexOutOfBoundsException();
    }
    return errors_->instances[index];
}

void CIMException::addError(const CIMInstance& instance) { errors_->instances.push_back(instance); }

AlreadyExistsException::AlreadyExistsException(const String& message)
    : Exception("already exists: " + message) {}
InvalidNameException::InvalidNameException(const String& message)
    : Exception("The CIM name is not valid: " + message) {}
InvalidNamespaceNameException::InvalidNamespaceNameException(const String& message)
    : Exception("invalid CIM namespace name: " + message) {}
DateTimeOutOfRangeException::DateTimeOutOfRangeException(const String& message)
    : Exception("DateTime is out of range : " + message) {}
MalformedObjectNameException::MalformedObjectNameException(const String& message)
    : Exception("malformed object name: " + message) {}
BindFailedException::BindFailedException(const String& message)
    : Exception("Bind failed: " + message) {}
InvalidLocatorException::InvalidLocatorException(const String& message)
    : Exception("Invalid locator: " + message) {}
CannotConnectException::CannotConnectException(const String& message) : Exception(message) {}
SSLException::SSLException(const String& message) : Exception("SSL Exception: " + message) {}
TypeMismatchException::TypeMismatchException() : Exception("type mismatch") {}
TypeMismatchException::TypeMismatchException(const String& message)
    : Exception("type mismatch: " + message) {}
IndexOutOfBoundsException::IndexOutOfBoundsException() : Exception("index out of bounds") {}
UninitializedObjectException::UninitializedObjectException() : Exception("uninitialized object") {}
DynamicCastFailedException::DynamicCastFailedException() : Exception("dynamic cast failed") {}
InvalidDateTimeFormatException::InvalidDateTimeFormatException()
    : Exception("invalid datetime format") {}
CannotCreateSocketException::CannotCreateSocketException() : Exception("Cannot create socket") {}
AlreadyConnectedException::AlreadyConnectedException() : Exception("already connected") {}
NotConnectedException::NotConnectedException() : Exception("not connected") {}
ConnectionTimeoutException::ConnectionTimeoutException() : Exception("connection timed out") {}
InvalidEnumerationContextException::InvalidEnumerationContextException()
    : Exception("Invalid enumeration context") {}
NullPointer::NullPointer() : Exception("null pointer") {}

CIMClientMalformedHTTPException::CIMClientMalformedHTTPException(const String& message)
    : Exception(message) {}
CIMClientXmlException::CIMClientXmlException(const String& message) : Exception(message) {}
CIMClientResponseException::CIMClientResponseException(const String& message)
    : Exception(message) {}

namespace {

String HttpErrorText(Uint32 code, const String& reason, const String& cim_error,
                     const String& detail) {
    const auto quoted = [](const char* label, const String& text) {
        return text.utf8().empty()
                   ? std::string()
                   : " " + std::string(label) + " = \"" + std::string(text.utf8()) + "\"";
    };
    std::string text = "HTTP Error (" + std::to_string(code);
    if (!reason.utf8().empty()) {
        text += " " + std::string(reason.utf8());
    }
    text += ")";
    const std::string causes = quoted("CIMError", cim_error) + quoted("Detail", detail);
    if (!causes.empty()) {
        text += ":" + causes;
    }
    return String::FromUtf8(text + ".");
}

}  // namespace

CIMClientHTTPErrorException::CIMClientHTTPErrorException(Uint32 httpStatusCode,
                                                         const String& reasonPhrase,
                                                         const String& cimError,
                                                         const String& cimErrorDetail)
    : Exception(HttpErrorText(httpStatusCode, reasonPhrase, cimError, cimErrorDetail)),
      code_(httpStatusCode),
      cim_error_(cimError),
      cim_error_detail_(cimErrorDetail) {}

CIMClientHTTPErrorException::CIMClientHTTPErrorException(Uint32 httpStatusCode,
                                                         const String& cimError,
                                                         const String& cimErrorDetail)
    : CIMClientHTTPErrorException(httpStatusCode, String(), cimError, cimErrorDetail) {}

Uint32 CIMClientHTTPErrorException::getCode() const { return code_; }

String CIMClientHTTPErrorException::getCIMError() const { return cim_error_; }

String CIMClientHTTPErrorException::getCIMErrorDetail() const { return cim_error_detail_; }

const char* cimStatusCodeToString(CIMStatusCode code) {
    static const char* const kNames[] = {
        "CIM_ERR_SUCCESS",
        "CIM_ERR_FAILED",
        "CIM_ERR_ACCESS_DENIED",
        "CIM_ERR_INVALID_NAMESPACE",
        "CIM_ERR_INVALID_PARAMETER",
        "CIM_ERR_INVALID_CLASS",
        "CIM_ERR_NOT_FOUND",
        "CIM_ERR_NOT_SUPPORTED",
        "CIM_ERR_CLASS_HAS_CHILDREN",
        "CIM_ERR_CLASS_HAS_INSTANCES",
        "CIM_ERR_INVALID_SUPERCLASS",
        "CIM_ERR_ALREADY_EXISTS",
        "CIM_ERR_NO_SUCH_PROPERTY",
        "CIM_ERR_TYPE_MISMATCH",
        "CIM_ERR_QUERY_LANGUAGE_NOT_SUPPORTED",
        "CIM_ERR_INVALID_QUERY",
        "CIM_ERR_METHOD_NOT_AVAILABLE",
        "CIM_ERR_METHOD_NOT_FOUND",
        "empty",
        "empty",
        "CIM_ERR_NAMESPACE_NOT_EMPTY",
        "CIM_ERR_INVALID_ENUMERATION_CONTEXT",
        "CIM_ERR_INVALID_OPERATION_TIMEOUT",
        "CIM_ERR_PULL_HAS_BEEN_ABANDONED",
        "CIM_ERR_PULL_CANNOT_BE_ABANDONED",
        "CIM_ERR_FILTERED_ENUMERATION_NOT_SUPPORTED",
        "CIM_ERR_CONTINUATION_ON_ERROR_NOT_SUPPORTED",
        "CIM_ERR_SERVER_LIMITS_EXCEEDED",
        "CIM_ERR_SERVER_IS_SHUTTING_DOWN",
    };
    const auto number = static_cast<std::size_t>(static_cast<Uint32>(code));
    return number < std::size(kNames) ? kNames[number] : "Unrecognized CIM status code";
}

}  // namespace Pegasus::kalvex
