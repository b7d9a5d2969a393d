// The exceptions of the CIM client API. All derive directly from Exception, which does not derive
// from std::exception; only CIMException carries a status from the server.
#pragma once

#include "Pegasus/Common/CIMStatusCode.h"
#include "Pegasus/Common/String.h"

PEGASUS_NAMESPACE_BEGIN

namespace detail {
struct ExceptionAccess;
}

class Exception {
public:
    Exception(const String& message) : message_(message) {}
    Exception(const Exception& exception) = default;
    virtual ~Exception();
    Exception& operator=(const Exception& exception) = default;
    virtual const String& getMessage() const { return message_; }

private:
    friend struct detail::ExceptionAccess;
    String message_;
};

/// An error that the server reports. The message is the server's description, and empty without
/// one.
class CIMException : public Exception {
public:
    CIMException(CIMStatusCode code, const String& message = String::EMPTY)
        : Exception(message), code_(code) {}
    CIMStatusCode getCode() const { return code_; }

private:
    CIMStatusCode code_;
};

class AlreadyExistsException : public Exception {
public:
    AlreadyExistsException(const String& message) : Exception("already exists: " + message) {}
};

class InvalidNameException : public Exception {
public:
    InvalidNameException(const String& message)
        : Exception("The CIM name is not valid: " + message) {}
};

class InvalidNamespaceNameException : public Exception {
public:
    InvalidNamespaceNameException(const String& message)
        : Exception("invalid CIM namespace name: " + message) {}
};

class MalformedObjectNameException : public Exception {
public:
    MalformedObjectNameException(const String& message)
        : Exception("malformed object name: " + message) {}
};

class InvalidLocatorException : public Exception {
public:
    InvalidLocatorException(const String& message) : Exception("Invalid locator: " + message) {}
};

class CannotConnectException : public Exception {
public:
    CannotConnectException(const String& message) : Exception(message) {}
};

class CannotCreateSocketException : public Exception {
public:
    CannotCreateSocketException() : Exception("Cannot create socket") {}
};

class SSLException : public Exception {
public:
    SSLException(const String& message) : Exception("SSL Exception: " + message) {}
};

class TypeMismatchException : public Exception {
public:
    TypeMismatchException() : Exception("type mismatch") {}
};

class IndexOutOfBoundsException : public Exception {
public:
    IndexOutOfBoundsException() : Exception("index out of bounds") {}
};

class UninitializedObjectException : public Exception {
public:
    UninitializedObjectException() : Exception("uninitialized object") {}
};

class AlreadyConnectedException : public Exception {
public:
    AlreadyConnectedException() : Exception("already connected") {}
};

class NotConnectedException : public Exception {
public:
    NotConnectedException() : Exception("not connected") {}
};

class ConnectionTimeoutException : public Exception {
public:
    ConnectionTimeoutException() : Exception("connection timed out") {}
};

PEGASUS_NAMESPACE_END
