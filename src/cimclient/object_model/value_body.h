// What a CIMValue holds.
#pragma once

#include <vector>

#include "Pegasus/Common/CIMObject.h"
#include "Pegasus/Common/CIMValue.h"

namespace Pegasus::kalvex::detail {

/// The elements of an array, or one embedded object.
struct ValueBody : Counted {
    Array<String> texts;
    Array<CIMObject> objects;  ///< in place of texts
    /// Marks the elements that the wire held no readable text for; empty when all are readable.
    std::vector<bool> unreadable;

    Uint32 Size() const { return texts.size() + objects.size(); }
    bool IsReadable(Uint32 index) const { return unreadable.empty() || !unreadable[index]; }
};

inline bool IsEmbedded(CIMType type) { return type == CIMTYPE_OBJECT || type == CIMTYPE_INSTANCE; }

/// Lets the client's own rooms make values and look into them.
class ValueAccess {
public:
    /// A scalar that prints as this text.
    static CIMValue MakeScalar(CIMType type, String text) {
        CIMValue value(type, false);
        value.is_null_ = false;
        value.text_ = std::move(text);
        return value;
    }
    static CIMValue MakeScalar(CIMType type, const CIMObject& object) {
        Shared<ValueBody> body(new ValueBody);
        body->objects.append(object);
        return Make(type, false, std::move(body));
    }
    static CIMValue MakeArray(CIMType type, Shared<ValueBody> body) {
        return Make(type, true, std::move(body));
    }

    static const String& TextOf(const CIMValue& value) { return value.text_; }
    /// Of an array that is not null, or an embedded object.
    static const ValueBody& BodyOf(const CIMValue& value) { return *value.body_; }

private:
    static CIMValue Make(CIMType type, Boolean is_array, Shared<ValueBody> body) {
        CIMValue value(type, is_array);
        value.is_null_ = false;
        value.body_ = std::move(body);
        return value;
    }
};

}  // namespace Pegasus::kalvex::detail
