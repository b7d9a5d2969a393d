#include "outputs/text/text_writer.h"

#include <algorithm>
#include <ostream>

#include "outputs/text/display_text.h"

namespace outputs {

namespace {

/// A terminal that is narrower gets lines of this many columns, and so does a wider one.
constexpr std::size_t kNarrowest = 40;
constexpr std::size_t kWidest = 1000;

constexpr std::size_t kMostKept = std::size_t{64} * 1024;
constexpr std::size_t kMostLines = 12;  ///< of a paragraph
constexpr std::string_view kFurtherLine = "  ";

/// Of SGR (ECMA-48), by weight.
constexpr const char* kCodes[] = {"", "\x1B[1m", "\x1B[2m"};
constexpr const char* kPlainAgain = "\x1B[0m";

}  // namespace

TextWriter::TextWriter(const TextStyle& style, std::ostream& out)
    : columns_(std::clamp(style.columns, kNarrowest, kWidest)),
      has_colour_(style.has_colour),
      out_(out) {}

void TextWriter::Line(std::string_view shown, Weight weight) {
    AppendStyled(buffer_, shown.substr(0, shown.find_last_not_of(' ') + 1), weight);
    buffer_ += '\n';
    if (buffer_.size() >= kMostKept) {
        Flush();
    }
}

void TextWriter::Paragraph(std::string_view text, Weight weight) {
    if (DisplayColumns(text, columns_ + 1) <= columns_) {
        return Line(DisplayText(text), weight);
    }
    std::string_view indent;
    for (const std::string& line : DisplayLines(text, columns_ - kFurtherLine.size(), kMostLines)) {
        Line(std::string(indent) + line, weight);
        indent = kFurtherLine;
    }
}

void TextWriter::AppendStyled(std::string& line, std::string_view shown, Weight weight) const {
    const bool is_styled = has_colour_ && weight != Weight::kNormal && !shown.empty();
    line += is_styled ? kCodes[static_cast<std::size_t>(weight)] : "";
    line += shown;
    line += is_styled ? kPlainAgain : "";
}

void TextWriter::Flush() {
    out_.write(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
    buffer_.clear();
}

}  // namespace outputs
