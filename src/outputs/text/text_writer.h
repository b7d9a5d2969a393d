// Lines for a terminal, in its width and with colour where it has any.
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

#include "outputs/text/text_output.h"

namespace outputs {

enum class Weight { kNormal, kBold, kDim };

/// Keeps what it is given until Flush, but for large texts.
class TextWriter {
public:
    TextWriter(const TextStyle& style, std::ostream& out);

    /// How wide a line may be.
    std::size_t columns() const { return columns_; }

    /// One line of text that is fit for a terminal; blanks at its end are dropped. Without weight
    /// it stands as it is.
    void Line(std::string_view shown, Weight weight = Weight::kNormal);

    /// Any text, over as many lines as it needs, up to a number; all but the first are indented.
    void Paragraph(std::string_view text, Weight weight = Weight::kNormal);

    /// The text in the weight, where there is colour.
    void AppendStyled(std::string& line, std::string_view shown, Weight weight) const;

    void Flush();

private:
    const std::size_t columns_;
    const bool has_colour_;
    std::ostream& out_;
    std::string buffer_;
};

}  // namespace outputs
