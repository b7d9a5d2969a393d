#include "simhost/server_habits.h"

namespace simhost {

ServerOptions RealServerHabits() {
    ServerOptions options;
    // They leave Nagle's algorithm on. After a TLS 1.3 handshake the session tickets are on their
    // way, so that the first answer waits until the client's kernel acknowledges them: 40 ms on
    // each connection when it delays that.
    options.no_delay = false;
    options.max_tls = TlsVersion::kTls1_3;
    options.requests_per_connection = 10;
    options.announce_close = true;
    options.idle_limit = std::chrono::seconds(15);
    return options;
}

}  // namespace simhost
