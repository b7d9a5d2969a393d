#include "object_model/value_texts.h"

#include <charconv>
#include <cmath>

#include "common/text/ascii.h"
#include "common/text/number.h"

namespace Pegasus::kalvex::detail {

namespace {

bool IsHex(std::string_view text) {
    return text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
}

struct NamedType {
    std::string_view name;
    CIMType type;
};

/// The most frequent first. References and embedded objects have elements and attributes of their
/// own.
constexpr NamedType kNamedTypes[] = {
    {"string", CIMTYPE_STRING},     {"uint16", CIMTYPE_UINT16}, {"boolean", CIMTYPE_BOOLEAN},
    {"uint32", CIMTYPE_UINT32},     {"uint64", CIMTYPE_UINT64}, {"uint8", CIMTYPE_UINT8},
    {"datetime", CIMTYPE_DATETIME}, {"sint32", CIMTYPE_SINT32}, {"sint64", CIMTYPE_SINT64},
    {"sint16", CIMTYPE_SINT16},     {"sint8", CIMTYPE_SINT8},   {"real32", CIMTYPE_REAL32},
    {"real64", CIMTYPE_REAL64},     {"char16", CIMTYPE_CHAR16},
};

}  // namespace

std::optional<Uint64> Magnitude(std::string_view text) {
    return IsHex(text) ? Zentar::NumberOf<Uint64>(text.substr(2), 16)
                       : Zentar::NumberOf<Uint64>(text);
}

std::optional<Uint64> StrictMagnitude(std::string_view text) {
    const bool leading_zero = text.size() > 1 && text[0] == '0' && !IsHex(text);
    return leading_zero ? std::nullopt : Magnitude(text);
}

std::optional<Real64> LenientReal(std::string_view text) {
    if (!text.empty() && text[0] == '+') {
        text.remove_prefix(1);
        if (!text.empty() && text[0] == '-') {
            return std::nullopt;
        }
    }
    const auto number = Zentar::NumberOf<Real64>(text, std::chars_format::general);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

std::optional<Boolean> BooleanOf(std::string_view text) {
    if (Zentar::EqualNoCase(text, "true")) {
        return true;
    }
    return Zentar::EqualNoCase(text, "false") ? std::optional(false) : std::nullopt;
}

const char* BooleanText(Boolean value) { return value ? "TRUE" : "FALSE"; }

std::string RealText(Real64 value) {
    char text[64];
    const auto end =
        std::to_chars(text, text + sizeof text, value, std::chars_format::scientific, 16);
    return std::string(text, end.ptr);
}

std::optional<CIMType> TypeNamed(std::string_view name) {
    for (const NamedType& named : kNamedTypes) {
        if (name == named.name) {
            return named.type;
        }
    }
    return std::nullopt;
}

std::string_view NameOf(CIMType type) {
    for (const NamedType& named : kNamedTypes) {
        if (type == named.type) {
            return named.name;
        }
    }
    return {};
}

}  // namespace Pegasus::kalvex::detail
