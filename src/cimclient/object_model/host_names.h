// Which texts can name a host in an object path or a locator.
#pragma once

#include <string_view>

#include "Pegasus/Common/Config.h"

namespace Pegasus::kalvex::detail {

/// DNS labels or a dotted IPv4 address, without a port.
bool IsHostNameOrIPv4(std::string_view host);

/// An IPv6 address without brackets.
bool IsIPv6(std::string_view address);

/// A host as it stands in an object path: with an optional port, IPv6 in brackets and not
/// link-local.
bool IsPathHost(std::string_view host);

}  // namespace Pegasus::kalvex::detail
