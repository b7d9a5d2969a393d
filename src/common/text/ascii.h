// Characters of ASCII, whatever the locale.
#pragma once

#include <algorithm>
#include <string_view>

namespace Zentar {

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

constexpr bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

constexpr char LowerCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

inline bool EqualNoCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() &&
           (a.data() == b.data() || std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
                return x == y || LowerCase(x) == LowerCase(y);
            }));
}

/// Below, above or equal to 0.
inline int CompareNoCase(std::string_view a, std::string_view b) {
    const auto value = [](char c) { return static_cast<unsigned char>(LowerCase(c)); };
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
        if (const int difference = value(a[i]) - value(b[i]); difference != 0) {
            return difference;
        }
    }
    return a.size() < b.size() ? -1 : a.size() > b.size();
}

}  // namespace Zentar
