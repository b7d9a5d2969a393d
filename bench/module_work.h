// Reading hosts through the module, as an application does.
#pragma once

#include <cstddef>
#include <cstdint>

#include "module/exsi/kalvex.h"

namespace bench {

enum class Link { kHttp, kHttps };

inline constexpr const char* kUser = "reader";
inline constexpr const char* kPassword = "benchmark";

ZentarConnection::ConnectionInfo HostAt(std::uint16_t port, Link link);

/// The installed packages, filled into records. Throws std::runtime_error unless there are
/// `expected` of them.
void ReadPackages(Zentar::Agentless::Kalvex& host, std::size_t expected);

/// Everything that the module can read of one host, from the first connection to the last. Throws
/// std::runtime_error when part of it could not be read.
void ReadInventory(const ZentarConnection::ConnectionInfo& info);

}  // namespace bench
