// What the client can do beyond the API that it shares with others.
#pragma once

#include <cstddef>
#include <memory>

#include "Pegasus/Client/CIMClient.h"
#include "common/cancel/cancellation.h"
#include "net/trust.h"
#include "reply_limits.h"

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

/// Whom to connect to, and as whom. The texts are UTF-8.
struct Address {
    std::string_view host;
    unsigned port;
    bool has_tls;
    std::string_view user;
    std::string_view password;
};

/// As CIMClient::connect, from texts that the caller can overwrite.
void Connect(Pegasus::CIMClient& client, const Address& address);

}  // namespace cimclient
