// Texts in XML.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Zentar {

/// How many bytes at the beginning of the text stand for themselves.
std::size_t PlainXmlLength(std::string_view text);

/// The reference for any other character, without its ampersand: "lt;" or another of the five
/// predefined entities, or "#7;" for a control character.
std::string XmlReference(char c);

void AppendXmlEscaped(std::string& out, std::string_view text);

}  // namespace Zentar
