#pragma once

#include <Pegasus/Client/CIMClientException.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/SSLContext.h>

namespace Pegasus {

class CIMClient {
public:
    CIMClient();
    ~CIMClient();
    Uint32 getTimeout() const;
    void setTimeout(Uint32 timeoutMilliseconds);
    void connect(const String& host, const Uint32 portNumber, const String& userName,
                 const String& password);
    void connect(const String& host, const Uint32 portNumber, const SSLContext& sslContext,
                 const String& userName, const String& password);
    void connectLocal();
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
    CIMClient(const CIMClient&);
    CIMClient& operator=(const CIMClient&);
};

}  // namespace Pegasus
