#include "simhost/cim_type.h"

#include <algorithm>
#include <limits>

namespace simhost {

namespace {

template <class Integer>
constexpr CimType IntegerType(std::string_view name) {
    return {name, TypeFamily::kInteger,
            static_cast<std::int64_t>(std::numeric_limits<Integer>::min()),
            static_cast<std::uint64_t>(std::numeric_limits<Integer>::max())};
}

constexpr CimType kTypes[] = {
    {"boolean", TypeFamily::kBoolean, 0, 0}, IntegerType<std::uint8_t>("uint8"),
    IntegerType<std::uint16_t>("uint16"),    IntegerType<std::uint32_t>("uint32"),
    IntegerType<std::uint64_t>("uint64"),    IntegerType<std::int8_t>("sint8"),
    IntegerType<std::int16_t>("sint16"),     IntegerType<std::int32_t>("sint32"),
    IntegerType<std::int64_t>("sint64"),     {"real32", TypeFamily::kReal, 0, 0},
    {"real64", TypeFamily::kReal, 0, 0},     {"string", TypeFamily::kText, 0, 0},
    {"char16", TypeFamily::kText, 0, 0},     {"datetime", TypeFamily::kText, 0, 0},
};

}  // namespace

std::span<const CimType> CimTypes() { return kTypes; }

const CimType* FindCimType(std::string_view name) {
    const auto* found = std::find_if(std::begin(kTypes), std::end(kTypes),
                                     [&](const CimType& type) { return type.name == name; });
    return found == std::end(kTypes) ? nullptr : found;
}

std::string_view KeyValueType(const CimType& type) {
    switch (type.family) {
        case TypeFamily::kBoolean:
            return "boolean";
        case TypeFamily::kInteger:
        case TypeFamily::kReal:
            return "numeric";
        case TypeFamily::kText:
            break;
    }
    return "string";
}

}  // namespace simhost
