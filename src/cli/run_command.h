// The whole command, from its arguments to its exit status.
#pragma once

namespace command {

/// Does what the arguments say, the program's name first. Writes to std::cout and std::cerr; every
/// failure is one line there. Throws only when even that takes more memory than there is.
int RunCommand(int argc, const char* const* argv);

/// Says so without taking memory. Returns the exit status.
int FailForMemory();

}  // namespace command
