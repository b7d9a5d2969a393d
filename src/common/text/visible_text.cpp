#include "common/text/visible_text.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace Zentar {

namespace {

struct Range {
    std::int32_t first;
    std::int32_t last;
};

/// In ascending order. Beyond the controls and separators these are the characters that Unicode
/// lets a viewer ignore (Default_Ignorable_Code_Point) without the variation selectors, and the
/// interlinear annotations.
constexpr Range kHidden[] = {
    {0x0000, 0x001F},    // C0 controls
    {0x007F, 0x009F},    // DELETE, C1 controls
    {0x00AD, 0x00AD},    // SOFT HYPHEN
    {0x034F, 0x034F},    // COMBINING GRAPHEME JOINER
    {0x061C, 0x061C},    // ARABIC LETTER MARK
    {0x115F, 0x1160},    // Hangul fillers
    {0x17B4, 0x17B5},    // Khmer inherent vowels
    {0x180E, 0x180E},    // MONGOLIAN VOWEL SEPARATOR
    {0x200B, 0x200F},    // ZERO WIDTH SPACE, joiners, direction marks
    {0x2028, 0x202E},    // separators, embeddings and overrides of direction
    {0x2060, 0x206F},    // WORD JOINER, invisible operators, isolates of direction
    {0x3164, 0x3164},    // HANGUL FILLER
    {0xFEFF, 0xFEFF},    // ZERO WIDTH NO-BREAK SPACE
    {0xFFA0, 0xFFA0},    // HALFWIDTH HANGUL FILLER
    {0xFFF0, 0xFFFB},    // unassigned, interlinear annotations
    {0x1BCA0, 0x1BCA3},  // shorthand format controls
    {0x1D173, 0x1D17A},  // musical format controls
    {0xE0000, 0xE00FF},  // tags
    {0xE01F0, 0xE0FFF},  // unassigned
};

template <class... Values>
std::string Formatted(const char* format, Values... values) {
    char text[16];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

std::string Escape(const TextUnit& unit) {
    switch (unit.code) {
        case '\n':
            return "\\n";
        case '\r':
            return "\\r";
        case '\t':
            return "\\t";
        default:
            break;
    }
    if (unit.code < 0x80) {
        return Formatted("\\x%02X",
                         static_cast<unsigned>(static_cast<unsigned char>(unit.bytes[0])));
    }
    return Formatted("\\u{%04X}", static_cast<unsigned>(unit.code));
}

}  // namespace

bool IsHidden(std::int32_t code) {
    const auto* const range = std::ranges::lower_bound(kHidden, code, {}, &Range::last);
    return range != std::end(kHidden) && range->first <= code;
}

void AppendVisible(std::string& shown, const TextUnit& unit) {
    if (unit.code == '\\') {
        shown += "\\\\";
    } else if (unit.code < 0 || IsHidden(unit.code)) {
        shown += Escape(unit);
    } else {
        shown += unit.bytes;
    }
}

}  // namespace Zentar
