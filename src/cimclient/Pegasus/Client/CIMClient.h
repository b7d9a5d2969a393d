// The CIM client: WBEM operations over HTTP and HTTPS (DSP0200, DSP0201).
#pragma once

#include <memory>

#include "Pegasus/Client/CIMClientException.h"
#include "Pegasus/Common/Array.h"
#include "Pegasus/Common/CIMInstance.h"
#include "Pegasus/Common/CIMName.h"
#include "Pegasus/Common/CIMObject.h"
#include "Pegasus/Common/CIMObjectPath.h"
#include "Pegasus/Common/CIMProperty.h"
#include "Pegasus/Common/CIMPropertyList.h"
#include "Pegasus/Common/CIMQualifier.h"
#include "Pegasus/Common/CIMValue.h"
#include "Pegasus/Common/SSLContext.h"
#include "Pegasus/Common/String.h"

PEGASUS_NAMESPACE_BEGIN

namespace detail {
class ClientSession;
struct ClientAccess;
}  // namespace detail

/// One connection to one CIM server. Calls block the caller's thread; an object must not be used
/// from two threads at once. Every failure is an exception (CIMException for what the server
/// reports, other kinds of Exception for the rest) and leaves the object usable: the next operation
/// connects again by itself where that is needed.
class CIMClient {
public:
    CIMClient();
    ~CIMClient();
    CIMClient(const CIMClient&) = delete;
    CIMClient& operator=(const CIMClient&) = delete;

    /// Milliseconds, 20000 at first: the bound of `connect` and of each operation as a whole.
    Uint32 getTimeout() const;
    void setTimeout(Uint32 timeoutMilliseconds);

    /// Opens the TCP connection, with an SSLContext also the TLS session. Sends no HTTP yet.
    void connect(const String& host, const Uint32 portNumber, const String& userName,
                 const String& password);
    void connect(const String& host, const Uint32 portNumber, const SSLContext& sslContext,
                 const String& userName, const String& password);
    void disconnect();

    Array<CIMInstance> enumerateInstances(const CIMNamespaceName& nameSpace,
                                          const CIMName& className, Boolean deepInheritance = true,
                                          Boolean localOnly = true,
                                          Boolean includeQualifiers = false,
                                          Boolean includeClassOrigin = false,
                                          const CIMPropertyList& propertyList = CIMPropertyList());

    Array<CIMObject> associators(const CIMNamespaceName& nameSpace, const CIMObjectPath& objectName,
                                 const CIMName& assocClass = CIMName(),
                                 const CIMName& resultClass = CIMName(),
                                 const String& role = String::EMPTY,
                                 const String& resultRole = String::EMPTY,
                                 Boolean includeQualifiers = false,
                                 Boolean includeClassOrigin = false,
                                 const CIMPropertyList& propertyList = CIMPropertyList());

private:
    friend struct detail::ClientAccess;
    std::unique_ptr<detail::ClientSession> session_;
};

PEGASUS_NAMESPACE_END
