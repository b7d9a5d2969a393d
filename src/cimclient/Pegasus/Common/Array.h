// Arrays of the CIM client API: values that share their elements until one of them changes.
#pragma once

#include "Pegasus/Common/Exception.h"
#include "Pegasus/Common/Shared.h"

PEGASUS_NAMESPACE_BEGIN

/// Positions beyond the end throw IndexOutOfBoundsException. References to elements are valid until
/// the array changes; non-const access separates the array from its copies.
template <class T>
class Array {
public:
    Uint32 size() const { return body_ ? static_cast<Uint32>(body_->elements.size()) : 0; }
    void reserveCapacity(Uint32 capacity) { Editable().reserve(capacity); }
    void append(T x) { Editable().push_back(std::move(x)); }

    T& operator[](Uint32 index) {
        Check(index);
        return Editable()[index];
    }
    const T& operator[](Uint32 index) const {
        Check(index);
        return body_->elements[index];
    }

private:
    struct Body : detail::Counted {
        detail::ArenaVector<T> elements;
    };

    void Check(Uint32 index) const {
        if (index >= size()) {
            throw IndexOutOfBoundsException();
        }
    }
    detail::ArenaVector<T>& Editable() {
        if (!body_) {
            body_ = detail::Shared<Body>(new Body);
        } else if (!body_.IsUnique()) {
            body_ = detail::Shared<Body>(new Body(*body_));
        }
        return body_->elements;
    }

    detail::Shared<Body> body_;  ///< null when empty
};

PEGASUS_NAMESPACE_END
