// What of a text from outside stands as it is in logs and on terminals, and what as an escape.
#pragma once

#include <cstdint>
#include <string>

#include "common/text/utf8.h"

namespace Zentar {

/// Whether a character drives whatever shows it, or is invisible there: controls, line and
/// paragraph separators, direction marks, joiners, fillers, tags. Variation selectors are not
/// among them: they choose the form of a character that is visible.
bool IsHidden(std::int32_t code);

/// Appends the unit as it may be shown: itself, a backslash doubled, a hidden character as \n, \r,
/// \t, \xNN below U+0080 and \u{NNNN} beyond, and a byte that is not UTF-8 as \xNN. Since
/// backslashes are doubled, no text can pass for an escape, and each can be read back from what
/// is shown.
void AppendVisible(std::string& shown, const TextUnit& unit);

}  // namespace Zentar
