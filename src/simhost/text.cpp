#include "simhost/text.h"

#include <algorithm>
#include <charconv>

namespace simhost {

namespace {

bool IsAsciiLetter(char c) { return LowerCase(c) >= 'a' && LowerCase(c) <= 'z'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsControl(char c) { return (c >= 0 && c < ' ') || c == 0x7F; }

std::string_view Entity(char c) {
    switch (c) {
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        case '&':
            return "&amp;";
        case '"':
            return "&quot;";
        case '\'':
            return "&apos;";
        default:
            return {};
    }
}

constexpr std::string_view kHexDigits = "0123456789ABCDEF";

}  // namespace

char LowerCase(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool EqualIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return LowerCase(x) == LowerCase(y); });
}

bool LessIgnoringCase(std::string_view a, std::string_view b) {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [](char x, char y) { return LowerCase(x) < LowerCase(y); });
}

std::string_view Trimmed(std::string_view text) {
    const auto begin = text.find_first_not_of(" \t");
    if (begin == std::string_view::npos) {
        return {};
    }
    return text.substr(begin, text.find_last_not_of(" \t") - begin + 1);
}

bool IsCimName(std::string_view name) {
    const auto is_letter = [](char c) { return IsAsciiLetter(c) || c == '_' || c < 0; };
    return !name.empty() && is_letter(name.front()) &&
           std::all_of(name.begin(), name.end(),
                       [&](char c) { return is_letter(c) || IsDigit(c); });
}

std::string XmlText(std::string_view text) {
    std::string xml;
    xml.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const bool at_end = i == 0 || i + 1 == text.size();
        if (const std::string_view entity = Entity(c); !entity.empty()) {
            xml += entity;
        } else if (IsControl(c) || (c == ' ' && at_end)) {
            xml += "&#" + std::to_string(static_cast<int>(c)) + ';';
        } else {
            xml += c;
        }
    }
    return xml;
}

std::string PercentEncoded(std::string_view text) {
    std::string encoded;
    for (const char c : text) {
        if (IsAsciiLetter(c) || IsDigit(c) || c == '-' || c == '_' || c == '.') {
            encoded += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            encoded += {'%', kHexDigits[byte >> 4], kHexDigits[byte & 15]};
        }
    }
    return encoded;
}

std::string PercentDecoded(std::string_view text) {
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned byte = 0;
        const char* digits = text.data() + i + 1;
        if (text[i] == '%' && i + 2 < text.size() &&
            std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2) {
            decoded += static_cast<char>(byte);
            i += 2;
        } else {
            decoded += text[i];
        }
    }
    return decoded;
}

}  // namespace simhost
