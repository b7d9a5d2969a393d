// The library that this code was loaded from.
#pragma once

namespace Zentar {

/// Keeps the library in memory until the process ends, even when the application unloads it: called
/// before a thread is started that may outlive its purpose. Does nothing in a program.
void KeepOwnLibrary();

}  // namespace Zentar
