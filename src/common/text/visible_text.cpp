#include "common/text/visible_text.h"

#include <algorithm>
#include <cstddef>
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

constexpr std::int32_t kNotUtf8 = -1;

/// What the first byte of a sequence says about it.
struct Lead {
    std::size_t length;
    std::int32_t smallest;  ///< smaller characters have shorter sequences
    unsigned char first;
    unsigned char last;
};

constexpr Lead kLeads[] = {
    {1, 0, 0x00, 0x7F}, {2, 0x80, 0xC2, 0xDF}, {3, 0x800, 0xE0, 0xEF}, {4, 0x10000, 0xF0, 0xF4}};

constexpr bool IsSurrogate(std::int32_t code) { return code >= 0xD800 && code <= 0xDFFF; }

/// The character of a sequence that may be damaged.
std::int32_t Decoded(std::string_view sequence, const Lead& lead) {
    if (sequence.size() < lead.length) {
        return kNotUtf8;
    }
    std::int32_t code = static_cast<unsigned char>(sequence[0]) & (0x7F >> (lead.length - 1));
    for (const char c : sequence.substr(1)) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte & 0xC0) != 0x80) {
            return kNotUtf8;
        }
        code = code << 6 | (byte & 0x3F);
    }
    constexpr std::int32_t kLargest = 0x10FFFF;
    return code < lead.smallest || code > kLargest || IsSurrogate(code) ? kNotUtf8 : code;
}

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

TextUnit FirstUnit(std::string_view text) {
    const auto byte = static_cast<unsigned char>(text[0]);
    for (const Lead& lead : kLeads) {
        if (byte >= lead.first && byte <= lead.last) {
            const std::string_view sequence = text.substr(0, lead.length);
            const std::int32_t code = Decoded(sequence, lead);
            return {code == kNotUtf8 ? text.substr(0, 1) : sequence, code};
        }
    }
    return {text.substr(0, 1), kNotUtf8};
}

bool IsHidden(std::int32_t code) {
    const auto* const range = std::ranges::lower_bound(kHidden, code, {}, &Range::last);
    return range != std::end(kHidden) && range->first <= code;
}

void AppendVisible(std::string& shown, const TextUnit& unit) {
    if (unit.code == '\\') {
        shown += "\\\\";
    } else if (unit.code == kNotUtf8 || IsHidden(unit.code)) {
        shown += Escape(unit);
    } else {
        shown += unit.bytes;
    }
}

}  // namespace Zentar
