// What a CIMValue holds.
#pragma once

#include <memory>
#include <variant>
#include <vector>

#include "Pegasus/Common/CIMObject.h"
#include "Pegasus/Common/CIMValue.h"

namespace Pegasus::kalvex::detail {

/// In the order of CIMType, so that a scalar's index is its type.
using Scalar =
    std::variant<Boolean, Uint8, Sint8, Uint16, Sint16, Uint32, Sint32, Uint64, Sint64, Real32,
                 Real64, Char16, String, CIMDateTime, CIMObjectPath, CIMObject, CIMInstance>;
using Elements =
    std::variant<Array<Boolean>, Array<Uint8>, Array<Sint8>, Array<Uint16>, Array<Sint16>,
                 Array<Uint32>, Array<Sint32>, Array<Uint64>, Array<Sint64>, Array<Real32>,
                 Array<Real64>, Array<Char16>, Array<String>, Array<CIMDateTime>,
                 Array<CIMObjectPath>, Array<CIMObject>, Array<CIMInstance>>;

struct ValueBody : Counted {
    /// Null of a type.
    ValueBody(CIMType type_, Boolean is_array_, Uint32 array_size_)
        : type(type_), is_array(is_array_), is_null(true), null_array_size(array_size_) {}
    explicit ValueBody(Scalar scalar)
        : type(static_cast<CIMType>(scalar.index())), content(std::move(scalar)) {}
    explicit ValueBody(Elements elements)
        : type(static_cast<CIMType>(elements.index())),
          is_array(true),
          content(std::move(elements)) {}

    CIMType type;
    Boolean is_array = false;
    Boolean is_null = false;
    Uint32 null_array_size = 0;
    std::variant<std::monostate, Scalar, Elements> content;
    /// Marks the elements that the wire held no readable text for; null when all are readable.
    std::unique_ptr<std::vector<bool>> lost;
};

/// Lets the client's own rooms make values and look into them.
class ValueAccess {
public:
    static CIMValue Make(Shared<ValueBody> body) {
        CIMValue value;
        value.body_ = std::move(body);
        return value;
    }
    /// Null for the default value.
    static const ValueBody* Body(const CIMValue& value) { return value.body_.get(); }
};

}  // namespace Pegasus::kalvex::detail
