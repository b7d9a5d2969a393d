// The terminal that the command was started on, whatever its streams are connected to.
#pragma once

#include <string>

#include "common/platform/secret.h"

namespace command {

/// False when the process has no terminal of its own.
bool HasTerminal();

/// Writes the prompt to the terminal and reads one line without echo, its line break dropped. The
/// echo is restored in any case, also when a signal ends or stops the process meanwhile. Throws
/// UsageError when nothing could be read.
Zentar::Secret AskOnTerminal(const std::string& prompt);

}  // namespace command
