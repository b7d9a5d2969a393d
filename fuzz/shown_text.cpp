#include "shown_text.h"

#include <cstdint>

#include "target.h"

namespace fuzz {

namespace {

struct Range {
    std::uint32_t first, last;
};

/// A choice, by the numbers: controls, soft hyphen, joiners and marks of direction, separators,
/// isolates, the byte order mark, annotations, tags.
constexpr Range kNeverShown[] = {
    {0x00, 0x09},     {0x0B, 0x1F},     {0x7F, 0x9F},       {0xAD, 0xAD},
    {0x61C, 0x61C},   {0x200B, 0x200F}, {0x2028, 0x202E},   {0x2060, 0x206F},
    {0xFEFF, 0xFEFF}, {0xFFF9, 0xFFFB}, {0xE0000, 0xE007F},
};

/// Takes a character off the front. The text must be UTF-8.
std::uint32_t TakeCharacter(std::string_view& text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    Require((lead < 0x80 || lead >= 0xC2) && lead < 0xF5 && text.size() >= length);
    std::uint32_t code = length == 1 ? lead : lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[i]);
        Require((next & 0xC0U) == 0x80);
        code = code << 6U | (next & 0x3FU);
    }
    text.remove_prefix(length);
    return code;
}

bool MayBeShown(std::uint32_t code) {
    for (const Range& range : kNeverShown) {
        if (code >= range.first && code <= range.last) {
            return false;
        }
    }
    return true;
}

}  // namespace

void RequireShowable(std::string_view text, Tabs tabs) {
    while (!text.empty()) {
        const std::uint32_t code = TakeCharacter(text);
        Require(MayBeShown(code) || (code == '\t' && tabs == Tabs::kYes));
    }
}

}  // namespace fuzz
