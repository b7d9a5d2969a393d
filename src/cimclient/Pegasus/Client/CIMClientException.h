// Exceptions that a reply of the server, or its absence, leads to.
#pragma once

#include "Pegasus/Common/Exception.h"

PEGASUS_NAMESPACE_BEGIN

/// The reply is not HTTP, or lacks what CIM operations over HTTP (DSP0200) require.
class CIMClientMalformedHTTPException : public Exception {
public:
    CIMClientMalformedHTTPException(const String& message) : Exception(message) {}
};

/// The reply's body is not the CIM-XML (DSP0201) that was expected.
class CIMClientXmlException : public Exception {
public:
    CIMClientXmlException(const String& message) : Exception(message) {}
};

/// The reply answers another request, or holds a value that contradicts itself.
class CIMClientResponseException : public Exception {
public:
    CIMClientResponseException(const String& message) : Exception(message) {}
};

/// The reply has another status than 200.
class CIMClientHTTPErrorException : public Exception {
public:
    CIMClientHTTPErrorException(Uint32 httpStatusCode, const String& reasonPhrase,
                                const String& cimError, const String& cimErrorDetail);
    Uint32 getCode() const { return code_; }

private:
    Uint32 code_;
};

PEGASUS_NAMESPACE_END
