// What the operating system says of a failure, such as to open a file.
#pragma once

#include <string>
#include <system_error>

namespace Zentar {

/// Of an errno, from any thread.
inline std::string SystemWords(int error) { return std::generic_category().message(error); }

}  // namespace Zentar
