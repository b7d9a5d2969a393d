// How long to try a host, when to stop, and whom to trust.
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "common/cancel/cancel_handle.h"

namespace Zentar::ZentarConnection {

/// Options beside ConnectionInfo, filled by the caller; the module keeps copies. The defaults are
/// what an object without options does.
///
/// How long calls take at most, whatever the host does. Connecting: `connect_attempts` times
/// `connect_limit`, and the pauses between. A request: `request_limit`, in which connecting again
/// is included where the host had closed the connection; before it, and after a request that
/// failed, connecting once. `deadline` bounds all of that together.
struct ConnectionOptions {
    unsigned connect_attempts = 3;                   ///< for each connection; 0 counts as 1
    std::chrono::milliseconds connect_pause{10000};  ///< after each attempt that failed
    bool pause_after_last_attempt = true;

    /// One attempt as a whole: name resolution, all addresses of the name, and the TLS handshake.
    std::chrono::milliseconds connect_limit{2400000};
    /// One request as a whole, authentication and connecting again included.
    std::chrono::milliseconds request_limit{300000};
    /// The whole life of the object, from the beginning of its construction. Nothing: no such
    /// limit.
    std::optional<std::chrono::milliseconds> deadline;

    /// Asks no more, for good, once the host could not be reached in all attempts, has let two
    /// requests in a row time out, or has refused the credentials: later requests fail at once.
    bool give_up = false;

    /// File of CA certificates (PEM): the host's certificate must come from one of them and name
    /// the host. Only with HTTPS. Empty: not tested.
    std::string ca_file;
    /// SHA-256 fingerprints, in hexadecimal digits of either case, with or without colons: the
    /// host's certificate must have one of them. Only with HTTPS. Empty: not tested.
    std::vector<std::string> fingerprints;

    /// A reply of the host, head and body, that is larger is refused (`FailureKind::kBadReply`).
    /// Real ones stay under 20 MB. While one is read and its records are made, the object takes at
    /// most 4 times as much memory and 32 MiB, the caller's records apart; a reply that would take
    /// more is refused too.
    std::size_t max_reply_bytes = 64UL * 1024 * 1024;

    /// Ends the object's work from any thread. With an empty handle Kalvex::Cancel alone does, and
    /// pauses run to their end.
    CancelHandle cancel;
};

}  // namespace Zentar::ZentarConnection

namespace ZentarConnection = Zentar::ZentarConnection;
