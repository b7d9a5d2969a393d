// What is fuzzed: each program has one such function.
#pragma once

#include <cstdlib>
#include <string_view>

namespace fuzz {

/// Handles any bytes as input from outside. Whatever is wrong ends the process.
void Try(std::string_view input);

inline void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

}  // namespace fuzz
