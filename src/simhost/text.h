// Small things about texts.
#pragma once

#include <string>
#include <string_view>

namespace simhost {

/// ASCII letters only, as in CIM names and HTTP tokens.
char LowerCase(char c);
bool EqualIgnoringCase(std::string_view a, std::string_view b);
/// Orders as EqualIgnoringCase equates.
bool LessIgnoringCase(std::string_view a, std::string_view b);

/// Without blanks and tabs at both ends.
std::string_view Trimmed(std::string_view text);

/// A letter or underscore, then letters, digits and underscores; all beyond ASCII are letters.
bool IsCimName(std::string_view name);

/// As XML text: markup and quotes as entities, control characters as references, and so is white
/// space at either end, which readers would trim otherwise. Bytes beyond ASCII stay as they are.
std::string XmlText(std::string_view text);

/// Everything but ASCII letters, digits and "-_." as %XX.
std::string PercentEncoded(std::string_view text);
std::string PercentDecoded(std::string_view text);

}  // namespace simhost
