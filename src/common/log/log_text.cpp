#include "common/log/log_text.h"

#include <cstdio>

namespace Zentar {

namespace {

using Byte = unsigned char;

/// Length of the well-formed UTF-8 sequence at the start of `text`, or 0.
std::size_t SequenceLength(std::string_view text) {
    const Byte lead = static_cast<Byte>(text[0]);
    if (lead < 0x80) {
        return 1;
    }
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length) {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i) {
        if ((static_cast<Byte>(text[i]) & 0xC0) != 0x80) {
            return 0;
        }
    }
    const Byte second = static_cast<Byte>(text[1]);
    const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    const bool surrogate = lead == 0xED && second >= 0xA0;
    const bool too_high = lead == 0xF4 && second >= 0x90;
    return overlong || surrogate || too_high ? 0 : length;
}

bool IsC1Control(std::string_view sequence) {
    return sequence.size() == 2 && static_cast<Byte>(sequence[0]) == 0xC2 &&
           static_cast<Byte>(sequence[1]) < 0xA0;
}

/// U+2028 and U+2029, which some viewers break lines at.
bool IsLineSeparator(std::string_view sequence) {
    return sequence == "\xE2\x80\xA8" || sequence == "\xE2\x80\xA9";
}

void AppendEscaped(std::string& out, std::string_view sequence) {
    char escape[8];
    for (const char c : sequence) {
        std::snprintf(escape, sizeof escape, "\\x%02X", static_cast<Byte>(c));
        out += escape;
    }
}

bool IsPrintable(std::string_view sequence) {
    const Byte first = static_cast<Byte>(sequence[0]);
    const bool c0_control = first < 0x20 && first != '\t';
    return !c0_control && first != 0x7F && !IsC1Control(sequence) && !IsLineSeparator(sequence);
}

}  // namespace

std::string SafeLogText(std::string_view text) {
    // A line break at the very end would only add an empty line.
    if (!text.empty() && text.back() == '\n') {
        text.remove_suffix(1);
    }
    std::string out;
    out.reserve(text.size());
    while (!text.empty()) {
        const std::size_t length = SequenceLength(text);
        const std::string_view sequence = text.substr(0, length == 0 ? 1 : length);
        if (sequence == "\n") {
            out += "\n    ";
        } else if (length != 0 && IsPrintable(sequence)) {
            out += sequence;
        } else {
            AppendEscaped(out, sequence);
        }
        text.remove_prefix(sequence.size());
    }
    return out;
}

}  // namespace Zentar
