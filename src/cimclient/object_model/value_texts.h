// How values and types are written in CIM-XML and in object paths.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Pegasus/Common/CIMType.h"

namespace Pegasus::kalvex::detail {

/// "0", decimal without leading zeros, or 0x and hexadecimal digits; at most 64 bits.
std::optional<Uint64> StrictUnsigned(std::string_view text);

/// As StrictUnsigned, but leading zeros and a plus sign are accepted, as servers send them.
std::optional<Uint64> LenientUnsigned(std::string_view text);

/// An optional sign and LenientUnsigned's digits; at most 64 bits.
std::optional<Sint64> LenientSigned(std::string_view text);

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
