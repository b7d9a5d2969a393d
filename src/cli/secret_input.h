// Passwords from files and terminals.
#pragma once

#include "common/platform/secret.h"

namespace command {

constexpr std::size_t kLongestPassword = 65536;

/// Appends what the descriptor still has to give: up to its end, or up to a line break when
/// `one_line`. False, with errno, on failure; E2BIG when the password would be too long.
bool ReadSecret(int descriptor, bool one_line, Zentar::Secret& secret);

/// Drops one line break, "\n" or "\r\n", from the end.
void DropLineBreak(Zentar::Secret& secret);

}  // namespace command
