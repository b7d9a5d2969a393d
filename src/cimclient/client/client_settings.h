// What the client can do beyond the API that it shares with others.
#pragma once

#include <memory>

#include "Pegasus/Client/CIMClient.h"
#include "common/cancel/cancellation.h"
#include "transport/tls_settings.h"

namespace cimclient {

struct ClientSettings {
    /// Ends what the client has under way; null: nothing does, and no thread is started.
    std::shared_ptr<Zentar::Cancellation> cancellation;
    Trust trust;
};

/// Before the client connects.
void Configure(Pegasus::CIMClient& client, ClientSettings settings);

}  // namespace cimclient
