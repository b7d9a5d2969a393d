#include "outputs/text/display_text.h"

#include <utf8proc.h>

#include <algorithm>

#include "common/text/utf8.h"
#include "common/text/visible_text.h"

namespace outputs {

using Zentar::FirstUnit;
using Zentar::TextUnit;

namespace {

constexpr std::string_view kEllipsis = "…";  ///< one column
constexpr char kBlank = ' ';
constexpr std::string_view kPunctuation = "-./:,;_";  ///< as in versions and addresses

/// Stands as it is, in one column.
bool StandsAsItIs(char character) {
    return character >= ' ' && character <= '~' && character != '\\';
}

/// How many characters at the beginning are plain. Nearly all texts are nothing else.
std::size_t PlainSize(std::string_view text) {
    return static_cast<std::size_t>(std::ranges::find_if_not(text, StandsAsItIs) - text.begin());
}

/// Appends the unit as it may be shown, and returns its columns. Escapes are ASCII.
std::size_t AppendUnit(std::string& shown, const TextUnit& unit) {
    const std::size_t size = shown.size();
    AppendVisible(shown, unit);
    const std::string_view appended = std::string_view(shown).substr(size);
    return appended == unit.bytes ? static_cast<std::size_t>(utf8proc_charwidth(unit.code))
                                  : appended.size();
}

/// Appends units until one does not fit, and remembers where the ellipsis would.
class Shortener {
public:
    Shortener(std::string& shown, std::size_t most_columns)
        : shown_(shown), most_columns_(most_columns), size_before_ellipsis_(shown.size()) {}

    std::size_t Append(std::string_view text) {
        while (!text.empty()) {
            const std::size_t plain = PlainSize(text.substr(0, most_columns_ - width_ + 1));
            const std::size_t taken = plain > 0 ? TakePlain(text.substr(0, plain)) : TakeUnit(text);
            if (width_ > most_columns_) {
                shown_.resize(size_before_ellipsis_);
                shown_ += kEllipsis;
                return width_before_ellipsis_ + 1;
            }
            text.remove_prefix(taken);
        }
        return width_;
    }

private:
    std::size_t TakePlain(std::string_view plain) {
        const std::size_t room = most_columns_ - width_;
        if (room > 0) {
            const std::size_t kept = std::min(plain.size(), room - 1);
            size_before_ellipsis_ = shown_.size() + kept;
            width_before_ellipsis_ = width_ + kept;
        }
        shown_ += plain;
        width_ += plain.size();
        return plain.size();
    }

    std::size_t TakeUnit(std::string_view text) {
        const TextUnit unit = FirstUnit(text);
        width_ += AppendUnit(shown_, unit);
        if (width_ < most_columns_) {
            size_before_ellipsis_ = shown_.size();
            width_before_ellipsis_ = width_;
        }
        return unit.bytes.size();
    }

    std::string& shown_;
    const std::size_t most_columns_;
    std::size_t width_ = 0;
    std::size_t size_before_ellipsis_;
    std::size_t width_before_ellipsis_ = 0;
};

/// Finds where a line of a text ends: at the last blank that fits, or else after the last
/// punctuation, or where no more fits.
class LineEnd {
public:
    explicit LineEnd(std::size_t most_columns) : most_columns_(most_columns) {}

    /// How many bytes to show, at least one unit.
    std::size_t Of(std::string_view text) {
        while (size_ < text.size() && width_ <= most_columns_) {
            const std::string_view room = text.substr(size_, most_columns_ - width_ + 1);
            const std::size_t plain = PlainSize(room);
            if (plain > 0) {
                TakePlain(room.substr(0, plain));
            } else {
                TakeUnit(text.substr(size_));
            }
        }
        if (width_ <= most_columns_) {
            return size_;
        }
        const std::size_t best = before_blank_ > 0 ? before_blank_ : after_punctuation_;
        return best > 0 ? best : fitting_;
    }

private:
    void TakePlain(std::string_view plain) {
        const std::size_t kept = std::min(plain.size(), most_columns_ - width_);
        const std::size_t blank = plain.rfind(kBlank);
        const std::size_t mark = plain.substr(0, kept).find_last_of(kPunctuation);
        before_blank_ = blank == std::string_view::npos ? before_blank_ : size_ + blank;
        after_punctuation_ = mark == std::string_view::npos ? after_punctuation_ : size_ + mark + 1;
        fitting_ = size_ + kept;
        size_ += plain.size();
        width_ += plain.size();
    }

    void TakeUnit(std::string_view text) {
        const TextUnit unit = FirstUnit(text);
        shown_.clear();
        width_ += AppendUnit(shown_, unit);
        size_ += unit.bytes.size();
        if (width_ <= most_columns_ || fitting_ == 0) {
            fitting_ = size_;
        }
    }

    const std::size_t most_columns_;
    std::size_t size_ = 0;
    std::size_t width_ = 0;
    std::size_t fitting_ = 0;
    std::size_t before_blank_ = 0;
    std::size_t after_punctuation_ = 0;
    std::string shown_;
};

std::string_view WithoutBlanksBefore(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(kBlank), text.size()));
}

std::string_view WithoutBlanksAfter(std::string_view text) {
    return text.substr(0, text.find_last_not_of(kBlank) + 1);
}

}  // namespace

std::string DisplayText(std::string_view text) {
    std::string shown;
    shown.reserve(text.size());
    while (!text.empty()) {
        const std::size_t plain = PlainSize(text);
        shown += text.substr(0, plain);
        text.remove_prefix(plain);
        if (!text.empty()) {
            const TextUnit unit = FirstUnit(text);
            AppendVisible(shown, unit);
            text.remove_prefix(unit.bytes.size());
        }
    }
    return shown;
}

std::string DisplayText(std::string_view text, std::size_t most_columns) {
    std::string shown;
    AppendDisplayText(shown, text, most_columns);
    return shown;
}

std::size_t AppendDisplayText(std::string& shown, std::string_view text, std::size_t most_columns) {
    return Shortener(shown, most_columns).Append(text);
}

std::vector<std::string> DisplayLines(std::string_view text, std::size_t most_columns,
                                      std::size_t most_lines) {
    std::vector<std::string> lines;
    while (lines.size() + 1 < most_lines && DisplayColumns(text, most_columns + 1) > most_columns) {
        text = WithoutBlanksBefore(text);
        const std::size_t size = LineEnd(most_columns).Of(text);
        const std::string_view rest = WithoutBlanksBefore(text.substr(size));
        if (rest.empty()) {
            break;
        }
        lines.push_back(DisplayText(WithoutBlanksAfter(text.substr(0, size)), most_columns));
        text = rest;
    }
    lines.push_back(DisplayText(text, most_columns));
    return lines;
}

std::size_t DisplayColumns(std::string_view text, std::size_t most_columns) {
    std::string scratch;
    std::size_t width = 0;
    while (!text.empty() && width < most_columns) {
        const std::size_t plain = PlainSize(text.substr(0, most_columns - width));
        width += plain;
        text.remove_prefix(plain);
        if (plain == 0) {
            const TextUnit unit = FirstUnit(text);
            scratch.clear();
            width += AppendUnit(scratch, unit);
            text.remove_prefix(unit.bytes.size());
        }
    }
    return std::min(width, most_columns);
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
