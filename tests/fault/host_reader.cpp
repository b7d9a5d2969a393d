// A plug-in that reads hosts through the module, as applications load and unload it.
#include "module/exsi/kalvex.h"

extern "C" __attribute__((visibility("default"))) void TryHost(const char* name,
                                                               unsigned limit_ms) {
    Zentar::ZentarConnection::ConnectionInfo info;
    info.host = name;
    info.port = 1;
    info.connection_case = 2;
    Zentar::ZentarConnection::ConnectionOptions options;
    options.connect_attempts = 1;
    options.pause_after_last_attempt = false;
    options.give_up = true;
    options.connect_limit = std::chrono::milliseconds(limit_ms);
    const Zentar::Agentless::Kalvex host(info, options);
}
