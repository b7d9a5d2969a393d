#include "outputs/text/display_text.h"

#include <utf8proc.h>

#include "common/text/visible_text.h"

namespace outputs {

using Zentar::FirstUnit;
using Zentar::TextUnit;

namespace {

constexpr std::string_view kEllipsis = "…";  ///< one column

}  // namespace

std::string DisplayText(std::string_view text) {
    std::string shown;
    shown.reserve(text.size());
    while (!text.empty()) {
        const TextUnit unit = FirstUnit(text);
        AppendVisible(shown, unit);
        text.remove_prefix(unit.bytes.size());
    }
    return shown;
}

std::string DisplayText(std::string_view text, std::size_t most_columns) {
    std::string shown;
    std::size_t width = 0;
    std::size_t fits_with_ellipsis = 0;
    while (!text.empty()) {
        const TextUnit unit = FirstUnit(text);
        const std::size_t size = shown.size();
        AppendVisible(shown, unit);
        width += DisplayWidth(std::string_view(shown).substr(size));
        if (width > most_columns) {
            shown.resize(fits_with_ellipsis);
            return shown.append(kEllipsis);
        }
        if (width < most_columns) {
            fits_with_ellipsis = shown.size();
        }
        text.remove_prefix(unit.bytes.size());
    }
    return shown;
}

std::size_t DisplayWidth(std::string_view text) {
    std::size_t width = 0;
    while (!text.empty()) {
        const TextUnit unit = FirstUnit(text);
        if (unit.code >= 0) {
            width += static_cast<std::size_t>(utf8proc_charwidth(unit.code));
        }
        text.remove_prefix(unit.bytes.size());
    }
    return width;
}

}  // namespace outputs
