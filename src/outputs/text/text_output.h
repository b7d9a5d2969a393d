// A document as text for people.
#pragma once

#include <cstddef>
#include <iosfwd>

#include "inventory/document.h"

namespace outputs {

struct TextStyle {
    std::size_t columns = 100;  ///< of the terminal
    bool has_colour = false;
};

/// Writes nothing of a host that was not asked for any section.
void WriteText(const inventory::Document& document, const TextStyle& style, std::ostream& out);

}  // namespace outputs
