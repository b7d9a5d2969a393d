#include "common/text/xml_escape.h"

#include <algorithm>

namespace Zentar {

namespace {

struct Entity {
    char character;
    const char* reference;
};

constexpr Entity kEntities[] = {
    {'<', "lt;"}, {'>', "gt;"}, {'&', "amp;"}, {'"', "quot;"}, {'\'', "apos;"}};

bool StandsForItself(char c) {
    return static_cast<unsigned char>(c) >= 0x20 && c != 0x7F &&
           std::ranges::find(kEntities, c, &Entity::character) == std::end(kEntities);
}

}  // namespace

std::size_t PlainXmlLength(std::string_view text) {
    return static_cast<std::size_t>(std::ranges::find_if_not(text, StandsForItself) - text.begin());
}

std::string XmlReference(char c) {
    const Entity* const entity = std::ranges::find(kEntities, c, &Entity::character);
    return entity != std::end(kEntities) ? entity->reference
                                         : "#" + std::to_string(static_cast<int>(c)) + ";";
}

void AppendXmlEscaped(std::string& out, std::string_view text) {
    while (!text.empty()) {
        const std::size_t plain = PlainXmlLength(text);
        out += text.substr(0, plain);
        text.remove_prefix(plain);
        if (!text.empty()) {
            out += "&" + XmlReference(text.front());
            text.remove_prefix(1);
        }
    }
}

}  // namespace Zentar
