// Forgetting secrets.
#pragma once

#include <string.h>

#include <string>

namespace Zentar {

/// Empties the text and overwrites all the memory it has, also where the compiler sees no further
/// use of it.
inline void Wipe(std::string& text) {
    text.resize(text.capacity());
    explicit_bzero(text.data(), text.size());
    text.clear();
}

}  // namespace Zentar
