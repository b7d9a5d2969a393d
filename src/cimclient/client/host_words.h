// What a host says, made fit for messages that people share.
#pragma once

#include <string>
#include <string_view>

#include "client/credentials.h"

namespace cimclient {

/// The longest message, in bytes; a longer one ends with an ellipsis.
inline constexpr std::size_t kMaxMessageBytes = 4096;

/// The well-formed UTF-8 text without the credentials, which a host may echo, and of bounded
/// length.
std::string FitForLogs(std::string_view text, const Credentials& credentials);

}  // namespace cimclient
