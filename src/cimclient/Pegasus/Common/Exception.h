// The exceptions of the CIM client API. All derive directly from Exception, which does not derive
// from std::exception; only CIMException carries a status from the server.
#pragma once

#include "Pegasus/Common/CIMStatusCode.h"
#include "Pegasus/Common/String.h"

PEGASUS_NAMESPACE_BEGIN

class CIMInstance;
class CIMConstInstance;
template <class T>
class Array;

class Exception {
public:
    Exception(const String& message);
    Exception(const Exception& exception);
    virtual ~Exception();
    Exception& operator=(const Exception& exception);
    virtual const String& getMessage() const;

protected:
    Exception();

private:
    String message_;
};

/// An error that the server reports. The message is the server's description, and empty without
/// one.
class CIMException : public Exception {
public:
    CIMException(CIMStatusCode code = CIM_ERR_SUCCESS, const String& message = String::EMPTY);
    CIMException(CIMStatusCode code, const String& message, const CIMInstance& instance);
    CIMException(CIMStatusCode code, const String& message, const Array<CIMInstance>& instances);
    CIMException(const CIMException& exception);
    CIMException& operator=(const CIMException& exception);
    ~CIMException() override;

    CIMStatusCode getCode() const;
    Uint32 getErrorCount() const;
    CIMConstInstance getError(Uint32 index) const;
    void addError(const CIMInstance& instance);

private:
    struct Errors;
    CIMStatusCode code_;
    Errors* errors_;
};

class AlreadyExistsException : public Exception {
public:
    AlreadyExistsException(const String& message);
};

class InvalidNameException : public Exception {
public:
    InvalidNameException(const String& message);
};

class InvalidNamespaceNameException : public Exception {
public:
    InvalidNamespaceNameException(const String& message);
};

class DateTimeOutOfRangeException : public Exception {
public:
    DateTimeOutOfRangeException(const String& message);
};

class MalformedObjectNameException : public Exception {
public:
    MalformedObjectNameException(const String& message);
};

class BindFailedException : public Exception {
public:
    BindFailedException(const String& message);
};

class InvalidLocatorException : public Exception {
public:
    InvalidLocatorException(const String& message);
};

class CannotConnectException : public Exception {
public:
    CannotConnectException(const String& message);
};

class SSLException : public Exception {
public:
    SSLException(const String& message);
};

class TypeMismatchException : public Exception {
public:
    TypeMismatchException();
    TypeMismatchException(const String& message);
};

class IndexOutOfBoundsException : public Exception {
public:
    IndexOutOfBoundsException();
};

class UninitializedObjectException : public Exception {
public:
    UninitializedObjectException();
};

class DynamicCastFailedException : public Exception {
public:
    DynamicCastFailedException();
};

class InvalidDateTimeFormatException : public Exception {
public:
    InvalidDateTimeFormatException();
};

class CannotCreateSocketException : public Exception {
public:
    CannotCreateSocketException();
};

class AlreadyConnectedException : public Exception {
public:
    AlreadyConnectedException();
};

class NotConnectedException : public Exception {
public:
    NotConnectedException();
};

class ConnectionTimeoutException : public Exception {
public:
    ConnectionTimeoutException();
};

class InvalidEnumerationContextException : public Exception {
public:
    InvalidEnumerationContextException();
};

/// A null pointer in place of a text.
class NullPointer : public Exception {
public:
    NullPointer();
};

PEGASUS_NAMESPACE_END
