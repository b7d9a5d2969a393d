// What the chosen CIM client can do beyond the API that every client offers. Each client has an
// implementation of its own, and the build links one of them.
#pragma once

#include <Pegasus/Client/CIMClient.h>

#include <memory>

#include "common/records/connection_info.h"
#include "common/records/connection_options.h"
#include "common/records/failure.h"

namespace Zentar {

class Cancellation;

/// Whether the client can keep the options about trust: it tests that a certificate names the host,
/// knows fingerprints, and sends nothing to a host that does not fit.
bool ClientTestsTrust();

/// Prepares a client that is not connected yet: whom it may trust, and what ends its work. Without
/// a cancellation it starts no thread and takes no lock. Throws Pegasus::Exception when the options
/// about trust cannot be used.
void PrepareClient(Pegasus::CIMClient& client, const ZentarConnection::ConnectionOptions& options,
                   const std::shared_ptr<Cancellation>& cancellation);

/// Connects to the host of `info` with its user and password, which is never repeated in a message:
/// over TLS with a context, over plain TCP without. What the client threw is thrown on.
void ConnectClient(Pegasus::CIMClient& client, const ZentarConnection::ConnectionInfo& info,
                   const Pegasus::SSLContext* tls);

/// Why the client threw: kind, phase, code and text of a failure, from the exception's type and
/// status alone. The text is what the client knows of the reason, at best the operating system's.
Failure CauseOf(const Pegasus::Exception& exception);

}  // namespace Zentar
