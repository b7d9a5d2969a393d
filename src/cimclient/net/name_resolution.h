// The addresses of a host's name.
#pragma once

#include <boost/asio/ip/tcp.hpp>
#include <string>
#include <vector>

#include "net/limit.h"

namespace cimclient {

/// All addresses of the name, as the system's resolver orders them; an address stands for itself.
/// Throws NetworkError.
///
/// The resolver cannot be interrupted. With a cancellation in the limit it works on a thread of its
/// own, which is left running when the limit comes first; at most kMostResolverThreads do so at a
/// time, and a call waits within its limit for a place. Without one it works on the caller's
/// thread, and keeps no limit but its own.
std::vector<boost::asio::ip::tcp::endpoint> Resolve(const std::string& host, unsigned port,
                                                    const Limit& limit);

inline constexpr int kMostResolverThreads = 256;

}  // namespace cimclient
