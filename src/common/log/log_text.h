// Makes a message's text safe to stand in a log.
#pragma once

#include <string>
#include <string_view>

namespace Zentar {

/// The text with its further lines indented. The bytes of other control characters and line
/// separators, and bytes that are not UTF-8, appear as \xNN. Tabs stay.
std::string SafeLogText(std::string_view text);

}  // namespace Zentar
