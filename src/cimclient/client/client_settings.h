// What the client can do beyond the API that it shares with others.
#pragma once

#include <cstddef>
#include <memory>

#include "Pegasus/Client/CIMClient.h"
#include "common/cancel/cancellation.h"
#include "reply_limits.h"
#include "transport/tls_settings.h"

namespace cimclient {

struct ClientSettings {
    /// Ends what the client has under way; null: nothing does, and no thread is started.
    std::shared_ptr<Zentar::Cancellation> cancellation;
    Trust trust;
    /// A larger reply, head and body, is refused.
    std::size_t max_reply_bytes = kMaxReplyBytes;
};

/// Before the client connects.
void Configure(Pegasus::CIMClient& client, ClientSettings settings);

}  // namespace cimclient
