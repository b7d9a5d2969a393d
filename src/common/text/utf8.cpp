#include "common/text/utf8.h"

#include <cstddef>

#include "common/text/byte_words.h"

namespace Zentar {

namespace {

constexpr std::int32_t kNotUtf8 = -1;
constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

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

/// The unit as UTF-8.
std::string_view Repaired(const TextUnit& unit) {
    return unit.code == kNotUtf8 ? kReplacement : unit.bytes;
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

std::size_t FirstInvalidUtf8(std::string_view text) {
    const char* const end = text.data() + text.size();
    const char* const ascii_end = byte_words::FirstMarked(text.data(), end, byte_words::NotAscii);
    for (auto at = static_cast<std::size_t>(ascii_end - text.data()); at < text.size();) {
        const TextUnit unit = FirstUnit(text.substr(at));
        if (unit.code == kNotUtf8) {
            return at;
        }
        at += unit.bytes.size();
    }
    return std::string_view::npos;
}

std::size_t RepairedUtf8Size(std::string_view text) {
    std::size_t size = 0;
    while (!text.empty()) {
        const TextUnit unit = FirstUnit(text);
        size += Repaired(unit).size();
        text.remove_prefix(unit.bytes.size());
    }
    return size;
}

std::string RepairedUtf8(std::string_view text) {
    std::string repaired;
    repaired.reserve(RepairedUtf8Size(text));
    while (!text.empty()) {
        const TextUnit unit = FirstUnit(text);
        repaired += Repaired(unit);
        text.remove_prefix(unit.bytes.size());
    }
    return repaired;
}

void AppendUtf8(std::string& out, char32_t code) {
    const auto put = [&out](char32_t byte) { out += static_cast<char>(byte); };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0 | (code >> 6));
        put(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        put(0xE0 | (code >> 12));
        put(0x80 | ((code >> 6) & 0x3F));
        put(0x80 | (code & 0x3F));
    } else {
        put(0xF0 | (code >> 18));
        put(0x80 | ((code >> 12) & 0x3F));
        put(0x80 | ((code >> 6) & 0x3F));
        put(0x80 | (code & 0x3F));
    }
}

}  // namespace Zentar
