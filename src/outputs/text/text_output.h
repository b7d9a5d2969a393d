// A document as text for people.
#pragma once

#include <cstddef>
#include <iosfwd>

#include "inventory/document.h"

namespace outputs {

struct TextStyle {
    /// Of the terminal: no line needs more, unless there are fewer than 40. At most 1,000 are used.
    std::size_t columns = 100;
    bool has_colour = false;  ///< headings and failures stand out by ANSI sequences
};

/// Writes nothing of a host that was not asked for any section.
void WriteText(const inventory::Document& document, const TextStyle& style, std::ostream& out);

}  // namespace outputs
