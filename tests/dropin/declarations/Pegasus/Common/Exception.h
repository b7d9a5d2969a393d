#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMStatusCode.h>

namespace Pegasus {

class Exception {
public:
    Exception(const String& message);
    Exception(const Exception&);
    virtual ~Exception();
    Exception& operator=(const Exception&);
    virtual const String& getMessage() const;

protected:
    Exception();
};

class CIMException : public Exception {
public:
    CIMException(CIMStatusCode code = CIM_ERR_SUCCESS, const String& message = String::EMPTY);
    CIMException(CIMStatusCode code, const String& message, const CIMInstance& instance);
    CIMException(CIMStatusCode code, const String& message, const Array<CIMInstance>& instances);
    CIMException(const CIMException&);
    CIMException& operator=(const CIMException&);
    virtual ~CIMException();
    CIMStatusCode getCode() const;
};

#define DECLARE_EXCEPTION_WITH_MESSAGE(Name) \
    class Name : public Exception {          \
    public:                                  \
        Name(const String& message);         \
    }
#define DECLARE_EXCEPTION(Name)     \
    class Name : public Exception { \
    public:                         \
        Name();                     \
    }
DECLARE_EXCEPTION_WITH_MESSAGE(AlreadyExistsException);
DECLARE_EXCEPTION_WITH_MESSAGE(InvalidNameException);
DECLARE_EXCEPTION_WITH_MESSAGE(InvalidNamespaceNameException);
DECLARE_EXCEPTION_WITH_MESSAGE(DateTimeOutOfRangeException);
DECLARE_EXCEPTION_WITH_MESSAGE(MalformedObjectNameException);
DECLARE_EXCEPTION_WITH_MESSAGE(BindFailedException);
DECLARE_EXCEPTION_WITH_MESSAGE(InvalidLocatorException);
DECLARE_EXCEPTION_WITH_MESSAGE(CannotConnectException);
DECLARE_EXCEPTION_WITH_MESSAGE(SSLException);
DECLARE_EXCEPTION(IndexOutOfBoundsException);
DECLARE_EXCEPTION(UninitializedObjectException);
DECLARE_EXCEPTION(DynamicCastFailedException);
DECLARE_EXCEPTION(InvalidDateTimeFormatException);
DECLARE_EXCEPTION(CannotCreateSocketException);
DECLARE_EXCEPTION(AlreadyConnectedException);
DECLARE_EXCEPTION(NotConnectedException);
DECLARE_EXCEPTION(ConnectionTimeoutException);
DECLARE_EXCEPTION(InvalidEnumerationContextException);
#undef DECLARE_EXCEPTION_WITH_MESSAGE
#undef DECLARE_EXCEPTION

class TypeMismatchException : public Exception {
public:
    TypeMismatchException();
    TypeMismatchException(const String& message);
};

}  // namespace Pegasus
