#include <optional>

#include "common/text/number.h"
#include "common/text/utf8.h"
#include "xml/xml_reader.h"

namespace cimclient {

namespace {

struct Reference {
    char32_t code;
    std::size_t length;  ///< with "&" and ";"
};

constexpr std::size_t kLongestReference = 12;

struct NamedReference {
    std::string_view text;
    char32_t code;
};

constexpr NamedReference kNamed[] = {
    {"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}, {"&quot;", '"'}, {"&apos;", '\''},
};

std::optional<char32_t> CodeOf(std::string_view reference) {
    for (const NamedReference& named : kNamed) {
        if (reference == named.text) {
            return named.code;
        }
    }
    if (!reference.starts_with("&#")) {
        return std::nullopt;
    }
    const bool hex = reference[2] == 'x' || reference[2] == 'X';
    const std::string_view digits = reference.substr(hex ? 3 : 2, reference.size() - (hex ? 4 : 3));
    return Zentar::NumberOf<unsigned>(digits, hex ? 16 : 10);
}

std::optional<Reference> ReferenceAt(std::string_view raw) {
    const std::size_t semicolon = raw.substr(0, kLongestReference).find(';');
    if (raw.empty() || raw[0] != '&' || semicolon == std::string_view::npos) {
        return std::nullopt;
    }
    const auto code = CodeOf(raw.substr(0, semicolon + 1));
    return code ? std::optional(Reference{*code, semicolon + 1}) : std::nullopt;
}

/// The bytes that consecutive references below 256 spell, if they make one UTF-8 character; some
/// servers write every byte of a text as a reference of its own.
std::optional<std::pair<std::string, std::size_t>> SpeltBytes(std::string_view raw) {
    std::string bytes;
    std::size_t length = 0;
    while (bytes.size() < 4) {
        const auto reference = ReferenceAt(raw.substr(length));
        if (!reference || reference->code < 0x80 || reference->code > 0xFF) {
            return std::nullopt;
        }
        bytes += static_cast<char>(reference->code);
        length += reference->length;
        if (Zentar::FirstInvalidUtf8(bytes) == std::string_view::npos) {
            return std::pair(bytes, length);
        }
    }
    return std::nullopt;
}

bool IsCharacter(char32_t code) { return code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF); }

}  // namespace

std::optional<std::string> ResolveReferences(std::string_view raw) {
    std::string text;
    text.reserve(raw.size());
    while (true) {
        const std::size_t ampersand = raw.find('&');
        text += raw.substr(0, ampersand);
        if (ampersand == std::string_view::npos) {
            return text;
        }
        raw.remove_prefix(ampersand);
        if (const auto spelt = SpeltBytes(raw)) {
            text += spelt->first;
            raw.remove_prefix(spelt->second);
            continue;
        }
        const auto reference = ReferenceAt(raw);
        if (!reference) {
            return std::nullopt;
        }
        Zentar::AppendUtf8(text, IsCharacter(reference->code) ? reference->code : 0xFFFD);
        raw.remove_prefix(reference->length);
    }
}

}  // namespace cimclient
