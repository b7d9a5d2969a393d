#include <atomic>

#include "Pegasus/Client/CIMClient.h"
#include "cimxml/request_writer.h"
#include "cimxml/response_reader.h"
#include "client/client_settings.h"
#include "client/failures.h"
#include "client/session.h"

namespace Pegasus::kalvex {

namespace detail {

class ClientSession : public cimclient::Session {};

struct ClientAccess {
    static ClientSession& SessionOf(CIMClient& client) { return *client.session_; }
};

}  // namespace detail

namespace {

/// One sequence for all clients of the process.
Uint32 NextMessageId() {
    static std::atomic<Uint32> next{1000};
    return next.fetch_add(1, std::memory_order_relaxed);
}

/// Sends a request and hands the reply's body to its reader.
template <class Request, class Objects>
Objects Perform(cimclient::Session& session, const char* method, const Request& request,
                Objects (*read)(const cimclient::XmlReader::Source&, unsigned)) {
    if (request.name_space.isNull()) {
        throw InvalidNamespaceNameException(String());
    }
    const Uint32 id = NextMessageId();
    Objects objects;
    try {
        session.Exchange(
            {method, std::string(request.name_space.getString().utf8()),
             cimclient::WriteRequest(request, id)},
            [&](const cimclient::Session::BodySource& body) { objects = read(body, id); });
    } catch (Exception& e) {
        cimclient::MakeFitForLogs(e, session.credentials());
        throw;
    }
    return objects;
}

}  // namespace

CIMClient::CIMClient() : session_(std::make_unique<detail::ClientSession>()) {}

CIMClient::~CIMClient() = default;

Uint32 CIMClient::getTimeout() const { return session_->Timeout(); }

void CIMClient::setTimeout(Uint32 timeoutMilliseconds) {
    session_->SetTimeout(timeoutMilliseconds);
}

void CIMClient::connect(const String& host, const Uint32 portNumber, const String& userName,
                        const String& password) {
    session_->Connect({host.utf8(), portNumber, false, userName.utf8(), password.utf8()});
}

void CIMClient::connect(const String& host, const Uint32 portNumber, const SSLContext&,
                        const String& userName, const String& password) {
    session_->Connect({host.utf8(), portNumber, true, userName.utf8(), password.utf8()});
}

void CIMClient::disconnect() { session_->Disconnect(); }

Array<CIMInstance> CIMClient::enumerateInstances(const CIMNamespaceName& nameSpace,
                                                 const CIMName& className, Boolean deepInheritance,
                                                 Boolean localOnly, Boolean includeQualifiers,
                                                 Boolean includeClassOrigin,
                                                 const CIMPropertyList&) {
    const cimclient::EnumerateInstancesRequest request{
        nameSpace, className, deepInheritance, localOnly, includeQualifiers, includeClassOrigin};
    return Perform(*session_, "EnumerateInstances", request, cimclient::ReadInstances);
}

Array<CIMObject> CIMClient::associators(const CIMNamespaceName& nameSpace,
                                        const CIMObjectPath& objectName, const CIMName& assocClass,
                                        const CIMName& resultClass, const String& role,
                                        const String& resultRole, Boolean includeQualifiers,
                                        Boolean includeClassOrigin, const CIMPropertyList&) {
    const cimclient::AssociatorsRequest request{
        nameSpace, objectName, assocClass,        resultClass,
        role,      resultRole, includeQualifiers, includeClassOrigin};
    return Perform(*session_, "Associators", request, cimclient::ReadObjects);
}

}  // namespace Pegasus::kalvex

namespace cimclient {

void Configure(Pegasus::CIMClient& client, ClientSettings settings) {
    Pegasus::detail::ClientAccess::SessionOf(client).Configure(std::move(settings));
}

void Connect(Pegasus::CIMClient& client, const Address& address) {
    Pegasus::detail::ClientAccess::SessionOf(client).Connect(address);
}

}  // namespace cimclient
