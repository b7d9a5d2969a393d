#include "cimxml/value_reader.h"

#include <limits>
#include <memory>
#include <type_traits>

#include "cimxml/embedded_object.h"
#include "object_model/utf.h"
#include "object_model/value_body.h"
#include "object_model/value_texts.h"

namespace cimclient {

namespace {

using namespace Pegasus;
using Pegasus::detail::ValueAccess;

template <class Narrow, class Wide>
std::optional<Narrow> InRange(std::optional<Wide> number) {
    if (!number || *number < static_cast<Wide>(std::numeric_limits<Narrow>::lowest()) ||
        *number > static_cast<Wide>(std::numeric_limits<Narrow>::max())) {
        return std::nullopt;
    }
    return static_cast<Narrow>(*number);
}

template <class T>
std::optional<T> Read(std::string_view text, TextCache&) {
    if constexpr (std::is_same_v<T, Boolean>) {
        return Pegasus::detail::BooleanOf(text);
    } else if constexpr (std::is_unsigned_v<T>) {
        return InRange<T>(Pegasus::detail::LenientUnsigned(text));
    } else if constexpr (std::is_integral_v<T>) {
        return InRange<T>(Pegasus::detail::LenientSigned(text));
    } else {
        // A real32 beyond the range of its type becomes infinity or zero.
        const auto real = Pegasus::detail::LenientReal(text);
        return real ? std::optional(static_cast<T>(*real)) : std::nullopt;
    }
}

template <>
std::optional<Char16> Read<Char16>(std::string_view text, TextCache&) {
    const auto units = Pegasus::detail::ToUtf16(text);
    return units.size() == 1 ? std::optional(units[0]) : std::nullopt;
}

template <>
std::optional<String> Read<String>(std::string_view text, TextCache& cache) {
    return cache.Text(text);
}

template <>
std::optional<CIMDateTime> Read<CIMDateTime>(std::string_view text, TextCache& cache) {
    if (text.empty()) {
        return CIMDateTime();
    }
    try {
        return CIMDateTime(cache.Text(text));
    } catch (const Exception&) {
        return std::nullopt;
    }
}

template <>
std::optional<CIMObject> Read<CIMObject>(std::string_view text, TextCache&) {
    return ReadEmbeddedObject(text);
}

template <>
std::optional<CIMInstance> Read<CIMInstance>(std::string_view text, TextCache&) {
    const auto object = ReadEmbeddedObject(text);
    return object && object->isInstance() ? std::optional(CIMInstance(*object)) : std::nullopt;
}

template <>
std::optional<CIMObjectPath> Read<CIMObjectPath>(std::string_view, TextCache&) {
    return std::nullopt;  // references come as elements, not as text
}

struct Readers {
    CIMValue (*scalar)(std::string_view text, CIMType type, TextCache& cache);
    CIMValue (*array)(const std::vector<ValueText>& texts, TextCache& cache);
};

template <class T>
CIMValue ReadScalar(std::string_view text, CIMType type, TextCache& cache) {
    std::optional<T> value = Read<T>(text, cache);
    return value ? ValueAccess::MakeScalar<T>(std::move(*value)) : CIMValue(type, false);
}

/// Elements that cannot be read are marked as lost.
template <class T>
CIMValue ReadArray(const std::vector<ValueText>& texts, TextCache& cache) {
    Array<T> array;
    array.reserveCapacity(static_cast<Uint32>(texts.size()));
    std::unique_ptr<std::vector<bool>> lost;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        std::optional<T> element = texts[i] ? Read<T>(*texts[i], cache) : std::nullopt;
        if (!element && !lost) {
            lost = std::make_unique<std::vector<bool>>(texts.size());
        }
        if (!element) {
            (*lost)[i] = true;
        }
        array.append(element ? std::move(*element) : T());
    }
    return ValueAccess::MakeArray<T>(std::move(array), std::move(lost));
}

template <class T>
constexpr Readers ReadersOf() {
    return {ReadScalar<T>, ReadArray<T>};
}

/// In the order of CIMType.
constexpr Readers kReaders[] = {
    ReadersOf<Boolean>(),   ReadersOf<Uint8>(),       ReadersOf<Sint8>(),
    ReadersOf<Uint16>(),    ReadersOf<Sint16>(),      ReadersOf<Uint32>(),
    ReadersOf<Sint32>(),    ReadersOf<Uint64>(),      ReadersOf<Sint64>(),
    ReadersOf<Real32>(),    ReadersOf<Real64>(),      ReadersOf<Char16>(),
    ReadersOf<String>(),    ReadersOf<CIMDateTime>(), ReadersOf<CIMObjectPath>(),
    ReadersOf<CIMObject>(), ReadersOf<CIMInstance>(),
};

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

std::optional<CIMType> TypeNamed(std::string_view name) {
    for (const NamedType& type : kNamedTypes) {
        if (name == type.name) {
            return type.type;
        }
    }
    return std::nullopt;
}

CIMValue ScalarFrom(CIMType type, const ValueText& text, TextCache& cache) {
    return text ? kReaders[type].scalar(*text, type, cache) : CIMValue(type, false);
}

CIMValue ArrayFrom(CIMType type, const std::vector<ValueText>& texts, TextCache& cache) {
    return kReaders[type].array(texts, cache);
}

}  // namespace cimclient
