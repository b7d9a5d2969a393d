// Characters of ASCII, told apart without a locale.
#pragma once

namespace cimclient {

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

constexpr bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

constexpr char LowerCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace cimclient
