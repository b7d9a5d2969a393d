#pragma once

#include <Pegasus/Common/Exception.h>

namespace Pegasus {

class CIMClientMalformedHTTPException : public Exception {
public:
    CIMClientMalformedHTTPException(const String& message);
};

class CIMClientXmlException : public Exception {
public:
    CIMClientXmlException(const String& message);
};

class CIMClientResponseException : public Exception {
public:
    CIMClientResponseException(const String& message);
};

class CIMClientHTTPErrorException : public Exception {
public:
    CIMClientHTTPErrorException(Uint32 httpStatusCode, const String& reasonPhrase,
                                const String& cimError, const String& cimErrorDetail);
    CIMClientHTTPErrorException(Uint32 httpStatusCode, const String& cimError,
                                const String& cimErrorDetail);
    CIMClientHTTPErrorException(const CIMClientHTTPErrorException&);
    virtual ~CIMClientHTTPErrorException();
    CIMClientHTTPErrorException& operator=(const CIMClientHTTPErrorException&);
    Uint32 getCode() const;
    String getCIMError() const;
    String getCIMErrorDetail() const;
};

}  // namespace Pegasus
