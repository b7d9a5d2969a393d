// How values and types are written in CIM-XML and in object paths.
#pragma once

#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

#include "Pegasus/Common/CIMType.h"

namespace Pegasus::kalvex::detail {

/// Decimal digits, or 0x and hexadecimal digits, without any sign; at most 64 bits.
std::optional<Uint64> Magnitude(std::string_view text);

/// The same, but for decimal digits that begin with a needless zero.
std::optional<Uint64> StrictMagnitude(std::string_view text);

/// An optional sign and a magnitude, within the type. An unsigned number takes a plus alone.
template <class Integer>
std::optional<Integer> IntegerOf(std::string_view text) {
    const bool is_negative = std::is_signed_v<Integer> && text.starts_with('-');
    const auto magnitude = Magnitude(text.substr(is_negative || text.starts_with('+') ? 1 : 0));
    const Uint64 most = Uint64{std::numeric_limits<Integer>::max()} + (is_negative ? 1 : 0);
    if (!magnitude || *magnitude > most) {
        return std::nullopt;
    }
    return static_cast<Integer>(is_negative ? 0 - *magnitude : *magnitude);
}

/// A decimal real with or without decimal point and exponent; nothing beyond a double's range.
std::optional<Real64> LenientReal(std::string_view text);

/// "true" or "false" in any case.
std::optional<Boolean> BooleanOf(std::string_view text);

const char* BooleanText(Boolean value);

/// The text that C's printf gives for "%.16e", whatever the locale.
std::string RealText(Real64 value);

/// The type of a TYPE attribute. References and embedded objects have none of their own.
std::optional<CIMType> TypeNamed(std::string_view name);
std::string_view NameOf(CIMType type);

}  // namespace Pegasus::kalvex::detail
