#include "cli/display_text.h"

#include <utf8proc.h>

#include <cstdio>

namespace command {

namespace {

struct Character {
    utf8proc_int32_t code;  ///< negative for a byte that is not UTF-8
    std::string_view bytes;
};

Character FirstCharacter(std::string_view text) {
    utf8proc_int32_t code = -1;
    const auto* bytes = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
    const auto length = utf8proc_iterate(bytes, static_cast<utf8proc_ssize_t>(text.size()), &code);
    return {length > 0 ? code : -1,
            text.substr(0, length > 0 ? static_cast<std::size_t>(length) : 1)};
}

bool IsJoiner(utf8proc_int32_t code) { return code == 0x200C || code == 0x200D; }

bool IsShown(utf8proc_int32_t code) {
    switch (utf8proc_category(code)) {
        case UTF8PROC_CATEGORY_CC:
        case UTF8PROC_CATEGORY_ZL:
        case UTF8PROC_CATEGORY_ZP:
            return false;
        case UTF8PROC_CATEGORY_CF:
            return IsJoiner(code);
        default:
            return true;
    }
}

template <class... Values>
std::string Formatted(const char* format, Values... values) {
    char text[16];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

std::string Visible(const Character& character) {
    switch (character.code) {
        case '\n':
            return "\\n";
        case '\r':
            return "\\r";
        case '\t':
            return "\\t";
        default:
            break;
    }
    if (character.code < 0) {
        return Formatted("\\x%02X", static_cast<unsigned char>(character.bytes[0]));
    }
    const char* const format = character.code < 0x80 ? "\\x%02X" : "\\u{%04X}";
    return Formatted(format, static_cast<unsigned>(character.code));
}

}  // namespace

std::string DisplayText(std::string_view text) {
    std::string shown;
    shown.reserve(text.size());
    while (!text.empty()) {
        const Character character = FirstCharacter(text);
        if (character.code >= 0 && IsShown(character.code)) {
            shown += character.bytes;
        } else {
            shown += Visible(character);
        }
        text.remove_prefix(character.bytes.size());
    }
    return shown;
}

std::size_t DisplayWidth(std::string_view text) {
    std::size_t width = 0;
    while (!text.empty()) {
        const Character character = FirstCharacter(text);
        if (character.code >= 0) {
            width += static_cast<std::size_t>(utf8proc_charwidth(character.code));
        }
        text.remove_prefix(character.bytes.size());
    }
    return width;
}

}  // namespace command
