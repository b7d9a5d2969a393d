// Where the password comes from.
#pragma once

#include "cli/host_options.h"
#include "common/platform/secret.h"

namespace command {

/// Finds the password's source at construction: the password file, else the environment, which
/// then forgets it, else the terminal. Without a terminal a password is missing only when a user
/// was named. Throws UsageError when the source cannot be read.
class PasswordSource {
public:
    explicit PasswordSource(const HostOptions& options);

    /// Once; asks on the terminal when that is the source.
    Zentar::Secret Take();

private:
    std::string prompt_;  ///< empty when the password is known
    Zentar::Secret known_;
};

}  // namespace command
