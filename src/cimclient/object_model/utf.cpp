#include "object_model/utf.h"

#include <algorithm>
#include <cstring>

namespace Pegasus::kalvex::detail {

namespace {

using Byte = unsigned char;

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

bool IsContinuation(char c) { return (static_cast<Byte>(c) & 0xC0) == 0x80; }

char32_t DecodeSequence(std::string_view sequence) {
    const Byte lead = static_cast<Byte>(sequence[0]);
    if (sequence.size() == 1) {
        return lead;
    }
    char32_t code_point = lead & (0x7Fu >> sequence.size());
    for (std::size_t i = 1; i < sequence.size(); ++i) {
        code_point = (code_point << 6) | (static_cast<Byte>(sequence[i]) & 0x3Fu);
    }
    return code_point;
}

/// How far the text is ASCII, looked at in words of eight bytes and then byte by byte.
std::size_t AsciiLength(std::string_view text) {
    constexpr Uint64 kHighBits = 0x8080808080808080;
    std::size_t at = 0;
    for (; at + sizeof(Uint64) <= text.size(); at += sizeof(Uint64)) {
        Uint64 word = 0;
        std::memcpy(&word, text.data() + at, sizeof word);
        if ((word & kHighBits) != 0) {
            break;
        }
    }
    while (at < text.size() && static_cast<Byte>(text[at]) < 0x80) {
        ++at;
    }
    return at;
}

bool IsHighSurrogate(Uint16 unit) { return unit >= 0xD800 && unit < 0xDC00; }

bool IsLowSurrogate(Uint16 unit) { return unit >= 0xDC00 && unit < 0xE000; }

}  // namespace

std::size_t Utf8SequenceLength(std::string_view text) {
    const Byte lead = static_cast<Byte>(text[0]);
    if (lead < 0x80) {
        return 1;
    }
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length ||
        !std::all_of(text.begin() + 1, text.begin() + static_cast<std::ptrdiff_t>(length),
                     IsContinuation)) {
        return 0;
    }
    const char32_t code_point = DecodeSequence(text.substr(0, length));
    const bool overlong =
        (length == 3 && code_point < 0x800) || (length == 4 && code_point < 0x10000);
    const bool surrogate = code_point >= 0xD800 && code_point < 0xE000;
    return overlong || surrogate || code_point > 0x10FFFF ? 0 : length;
}

std::size_t FirstInvalidUtf8(std::string_view text) {
    std::size_t at = AsciiLength(text);
    while (at < text.size()) {
        const std::size_t length = Utf8SequenceLength(text.substr(at));
        if (length == 0) {
            return at;
        }
        at += length;
    }
    return std::string_view::npos;
}

std::size_t RepairedUtf8Size(std::string_view text) {
    std::size_t size = 0;
    while (!text.empty()) {
        const std::size_t length = Utf8SequenceLength(text);
        size += length == 0 ? kReplacement.size() : length;
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return size;
}

std::string RepairedUtf8(std::string_view text) {
    std::string repaired;
    repaired.reserve(RepairedUtf8Size(text));
    while (!text.empty()) {
        const std::size_t length = Utf8SequenceLength(text);
        repaired += length == 0 ? kReplacement : text.substr(0, length);
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return repaired;
}

std::size_t Utf16Length(std::string_view utf8) {
    std::size_t units = AsciiLength(utf8);
    for (const char c : utf8.substr(units)) {
        units += IsContinuation(c) ? 0 : static_cast<Byte>(c) >= 0xF0 ? 2 : 1;
    }
    return units;
}

std::vector<Char16> ToUtf16(std::string_view utf8) {
    std::vector<Char16> units;
    units.reserve(utf8.size() + 1);  // the caller may add a terminator without moving them
    while (!utf8.empty()) {
        const std::size_t length = Utf8SequenceLength(utf8);
        const char32_t code_point = DecodeSequence(utf8.substr(0, length));
        if (code_point < 0x10000) {
            units.push_back(static_cast<Uint16>(code_point));
        } else {
            units.push_back(static_cast<Uint16>(0xD7C0 + (code_point >> 10)));
            units.push_back(static_cast<Uint16>(0xDC00 + (code_point & 0x3FF)));
        }
        utf8.remove_prefix(length);
    }
    return units;
}

std::string ToUtf8(const Char16* units, std::size_t count) {
    std::string utf8;
    utf8.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        const Uint16 unit = units[i];
        if (IsHighSurrogate(unit) && i + 1 < count && IsLowSurrogate(units[i + 1])) {
            AppendUtf8(utf8, 0x10000u + ((unit - 0xD800u) << 10) + (units[i + 1] - 0xDC00u));
            ++i;
        } else if (!IsHighSurrogate(unit) && !IsLowSurrogate(unit)) {
            AppendUtf8(utf8, unit);
        }
    }
    return utf8;
}

void AppendUtf8(std::string& out, char32_t code_point) {
    const auto put = [&out](char32_t byte) { out += static_cast<char>(byte); };
    if (code_point < 0x80) {
        put(code_point);
    } else if (code_point < 0x800) {
        put(0xC0 | (code_point >> 6));
        put(0x80 | (code_point & 0x3F));
    } else if (code_point < 0x10000) {
        put(0xE0 | (code_point >> 12));
        put(0x80 | ((code_point >> 6) & 0x3F));
        put(0x80 | (code_point & 0x3F));
    } else {
        put(0xF0 | (code_point >> 18));
        put(0x80 | ((code_point >> 12) & 0x3F));
        put(0x80 | ((code_point >> 6) & 0x3F));
        put(0x80 | (code_point & 0x3F));
    }
}

}  // namespace Pegasus::kalvex::detail
