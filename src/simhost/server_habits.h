// How the servers that hosts run treat connections.
#pragma once

#include "simhost/server.h"

namespace simhost {

/// The options of a server that treats its connections as the small-footprint servers on hosts do.
/// Address, account and all else are the defaults, for the caller to set.
ServerOptions RealServerHabits();

}  // namespace simhost
