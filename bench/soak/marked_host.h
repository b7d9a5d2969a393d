// Hosts that say texts of their own.
#pragma once

#include <string>

#include "simhost/host_description.h"

namespace soak {

/// The built-in host with `mark` after its names and descriptions, so that a record of one host
/// cannot pass for another's.
simhost::HostDescription MarkedHost(const std::string& mark);

}  // namespace soak
