// Passwords come from files, never from arguments.
#pragma once

#include <string>

#include "common/platform/secret.h"

namespace CLI {
class App;
}

namespace command {

/// The file's content, or standard input's for "-", without one line break at its end. Throws
/// UsageError, which names the option that the file was given with, when it cannot be read or holds
/// nothing.
Zentar::Secret ReadPasswordFile(const std::string& file, const std::string& option);

/// A password among the arguments shows in every process list. Makes the option an error that says
/// `remedy`; the value is neither used nor repeated.
void RefusePasswordArgument(CLI::App& app, const std::string& option, const std::string& remedy);

}  // namespace command
