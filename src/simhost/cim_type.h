// The CIM types that a property can have.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace simhost {

enum class TypeFamily { kBoolean, kInteger, kReal, kText };

struct CimType {
    std::string_view name;
    TypeFamily family;
    std::int64_t least;  ///< of an integer
    std::uint64_t most;
};

std::span<const CimType> CimTypes();
/// Null when there is no such type.
const CimType* FindCimType(std::string_view name);

/// How a key of this type is marked in an object path.
std::string_view KeyValueType(const CimType& type);

}  // namespace simhost
