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
using Pegasus::detail::Shared;
using Pegasus::detail::ValueAccess;
using Pegasus::detail::ValueBody;

template <class Narrow, class Wide>
std::optional<Narrow> InRange(std::optional<Wide> number) {
    if (!number || *number < static_cast<Wide>(std::numeric_limits<Narrow>::lowest()) ||
        *number > static_cast<Wide>(std::numeric_limits<Narrow>::max())) {
        return std::nullopt;
    }
    return static_cast<Narrow>(*number);
}

template <class T>
std::optional<T> Read(const std::string& text) {
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
std::optional<Char16> Read<Char16>(const std::string& text) {
    const auto units = Pegasus::detail::ToUtf16(text);
    return units.size() == 1 ? std::optional(units[0]) : std::nullopt;
}

template <>
std::optional<String> Read<String>(const std::string& text) {
    return String::FromUtf8(text);
}

template <>
std::optional<CIMDateTime> Read<CIMDateTime>(const std::string& text) {
    if (text.empty()) {
        return CIMDateTime();
    }
    try {
        return CIMDateTime(String::FromUtf8(text));
    } catch (const Exception&) {
        return std::nullopt;
    }
}

template <>
std::optional<CIMObject> Read<CIMObject>(const std::string& text) {
    return ReadEmbeddedObject(text);
}

template <>
std::optional<CIMInstance> Read<CIMInstance>(const std::string& text) {
    const auto object = ReadEmbeddedObject(text);
    return object && object->isInstance() ? std::optional(CIMInstance(*object)) : std::nullopt;
}

template <>
std::optional<CIMObjectPath> Read<CIMObjectPath>(const std::string&) {
    return std::nullopt;  // references come as elements, not as text
}

/// An array from what could be read of its elements; the others are marked as lost.
template <class T>
CIMValue ArrayOf(const std::vector<std::optional<T>>& elements) {
    Array<T> array;
    array.reserveCapacity(static_cast<Uint32>(elements.size()));
    auto lost = std::make_unique<std::vector<bool>>(elements.size());
    bool any_lost = false;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        array.append(elements[i].value_or(T()));
        (*lost)[i] = !elements[i];
        any_lost |= !elements[i];
    }
    Shared<ValueBody> body(new ValueBody(Pegasus::detail::Elements(array)));
    if (any_lost) {
        body->lost = std::move(lost);
    }
    return ValueAccess::Make(body);
}

struct Readers {
    CIMValue (*scalar)(const std::string& text, CIMType type);
    CIMValue (*array)(const std::vector<ValueText>& texts);
};

template <class T>
CIMValue ReadScalar(const std::string& text, CIMType type) {
    const std::optional<T> value = Read<T>(text);
    return value ? CIMValue(*value) : CIMValue(type, false);
}

template <class T>
CIMValue ReadArray(const std::vector<ValueText>& texts) {
    std::vector<std::optional<T>> elements;
    elements.reserve(texts.size());
    for (const ValueText& text : texts) {
        elements.push_back(text ? Read<T>(*text) : std::nullopt);
    }
    return ArrayOf(elements);
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

}  // namespace

std::optional<CIMType> TypeNamed(std::string_view name) {
    // References and embedded objects have elements and attributes of their own.
    for (int type = CIMTYPE_BOOLEAN; type <= CIMTYPE_DATETIME; ++type) {
        if (name == cimTypeToString(static_cast<CIMType>(type))) {
            return static_cast<CIMType>(type);
        }
    }
    return std::nullopt;
}

CIMValue ScalarFrom(CIMType type, const ValueText& text) {
    return text ? kReaders[type].scalar(*text, type) : CIMValue(type, false);
}

CIMValue ArrayFrom(CIMType type, const std::vector<ValueText>& texts) {
    return kReaders[type].array(texts);
}

}  // namespace cimclient
