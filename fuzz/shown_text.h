// What may be written where people look at it.
#pragma once

#include <string_view>

namespace fuzz {

enum class Tabs { kNo, kYes };

/// Ends the process unless the text is UTF-8 of which nothing drives a terminal, changes the
/// direction of what follows or is invisible; line breaks may be in it. Says so without the code
/// that escapes such characters.
void RequireShowable(std::string_view text, Tabs tabs);

}  // namespace fuzz
