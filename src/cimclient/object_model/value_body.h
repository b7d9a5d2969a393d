// What a CIMValue holds.
#pragma once

#include <cstring>
#include <memory>
#include <type_traits>
#include <variant>
#include <vector>

#include "Pegasus/Common/CIMObject.h"
#include "Pegasus/Common/CIMValue.h"

namespace Pegasus::kalvex::detail {

/// In the order of CIMType.
using Elements =
    std::variant<Array<Boolean>, Array<Uint8>, Array<Sint8>, Array<Uint16>, Array<Sint16>,
                 Array<Uint32>, Array<Sint32>, Array<Uint64>, Array<Sint64>, Array<Real32>,
                 Array<Real64>, Array<Char16>, Array<String>, Array<CIMDateTime>,
                 Array<CIMObjectPath>, Array<CIMObject>, Array<CIMInstance>>;

/// The position of an alternative in a variant.
template <class T, class Variant>
struct PositionIn;
template <class T, class... Rest>
struct PositionIn<T, std::variant<T, Rest...>> : std::integral_constant<int, 0> {};
template <class T, class First, class... Rest>
struct PositionIn<T, std::variant<First, Rest...>>
    : std::integral_constant<int, 1 + PositionIn<T, std::variant<Rest...>>::value> {};

/// The CIM type of a scalar's C++ type.
template <class T>
inline constexpr auto kTypeOf = static_cast<CIMType>(PositionIn<Array<T>, Elements>::value);

template <class T>
inline constexpr bool kIsNumber = std::is_arithmetic_v<T> || std::is_same_v<T, Char16>;

struct ValueBody : Counted {
    std::variant<CIMObjectPath, CIMObject, CIMInstance, Elements> content;
    /// Marks the elements that the wire held no readable text for; null when all are readable.
    std::unique_ptr<std::vector<bool>> lost;
};

/// Lets the client's own rooms make values and look into them.
class ValueAccess {
public:
    template <class T>
    static CIMValue MakeScalar(T x) {
        CIMValue value;
        value.type_ = kTypeOf<T>;
        if constexpr (kIsNumber<T>) {
            Uint64 bytes = 0;
            std::memcpy(&bytes, &x, sizeof x);
            value.content_ = bytes;
        } else if constexpr (std::is_same_v<T, String> || std::is_same_v<T, CIMDateTime>) {
            value.content_ = std::move(x);
        } else {
            value.content_ = MakeBody(std::move(x));
        }
        return value;
    }

    template <class T>
    static CIMValue MakeArray(Array<T> elements, std::unique_ptr<std::vector<bool>> lost = {}) {
        CIMValue value;
        value.type_ = kTypeOf<T>;
        value.is_array_ = true;
        const Shared<ValueBody> body = MakeBody(Elements(std::move(elements)));
        body->lost = std::move(lost);
        value.content_ = body;
        return value;
    }

    /// Of a scalar that is not null and of this type.
    template <class T>
    static T ScalarOf(const CIMValue& value) {
        if constexpr (kIsNumber<T>) {
            T x;
            std::memcpy(static_cast<void*>(&x), &std::get<Uint64>(value.content_), sizeof x);
            return x;
        } else if constexpr (std::is_same_v<T, String> || std::is_same_v<T, CIMDateTime>) {
            return std::get<T>(value.content_);
        } else {
            return std::get<T>(BodyOf(value).content);
        }
    }

    /// Of an array that is not null.
    static const Elements& ElementsOf(const CIMValue& value) {
        return std::get<Elements>(BodyOf(value).content);
    }
    static const std::vector<bool>* LostOf(const CIMValue& value) {
        return BodyOf(value).lost.get();
    }

    /// The text of a value whose content is one; null for all others.
    static const String* TextOf(const CIMValue& value) {
        return std::get_if<String>(&value.content_);
    }

    /// Hands a scalar that is not null to the visitor.
    template <class Visitor>
    static void VisitScalar(const CIMValue& value, const Visitor& visit) {
        Visit<Visitor, Elements>::kByType[value.getType()](value, visit);
    }

private:
    template <class Visitor, class Variant>
    struct Visit;
    template <class Visitor, class... T>
    struct Visit<Visitor, std::variant<Array<T>...>> {
        static constexpr void (*kByType[])(const CIMValue&, const Visitor&) = {
            [](const CIMValue& value, const Visitor& visit) { visit(ScalarOf<T>(value)); }...};
    };

    template <class Content>
    static Shared<ValueBody> MakeBody(Content content) {
        Shared<ValueBody> body(new ValueBody);
        body->content = std::move(content);
        return body;
    }
    static ValueBody& BodyOf(const CIMValue& value) {
        return *std::get<Shared<ValueBody>>(value.content_);
    }
};

}  // namespace Pegasus::kalvex::detail
