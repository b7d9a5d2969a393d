// One quick look at whether a host can be connected to, before the module's patient attempts.
#pragma once

#include "cli/host_options.h"

namespace command {

/// Connects once, to the first of the host's addresses that lets it, and makes the TLS handshake
/// where the transport has one; accepts any certificate. Sends nothing else. Takes no longer than
/// the options' time limit and throws UnreachableError when it did not succeed.
void ProbeConnection(const HostOptions& options);

}  // namespace command
