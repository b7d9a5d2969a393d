// Makes a message's text safe to stand in a log.
#pragma once

#include <string>
#include <string_view>

namespace Zentar {

/// The text with its further lines indented and tabs as they are. All else that drives a viewer or
/// is invisible there appears as an escape (see common/text/visible_text.h).
std::string SafeLogText(std::string_view text);

}  // namespace Zentar
