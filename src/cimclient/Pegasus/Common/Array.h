// Arrays of the CIM client API: values that share their elements until one of them changes.
#pragma once

#include <type_traits>
#include <vector>

#include "Pegasus/Common/Exception.h"
#include "Pegasus/Common/Shared.h"

PEGASUS_NAMESPACE_BEGIN

namespace detail {

/// Keeps std::vector from packing booleans into bits.
struct BooleanCell {
    BooleanCell(Boolean value_ = false) : value(value_) {}
    Boolean value;
};

template <class T>
struct ArrayBody : Counted {
    using Cell = std::conditional_t<std::is_same_v<T, Boolean>, BooleanCell, T>;
    ArenaVector<Cell> cells;
};

}  // namespace detail

/// Positions beyond the end throw IndexOutOfBoundsException. References to elements are valid until
/// the array changes; non-const access separates the array from its copies.
template <class T>
class Array {
public:
    Array() = default;
    Array(Uint32 size) { Editable().resize(size); }
    Array(Uint32 size, const T& x) { Editable().assign(size, x); }
    Array(const T* items, Uint32 size) { append(items, size); }

    void clear() { body_ = {}; }
    void reserveCapacity(Uint32 capacity) { Editable().reserve(capacity); }
    void grow(Uint32 size, const T& x) { Editable().insert(Editable().end(), size, x); }
    void swap(Array<T>& x) { std::swap(body_, x.body_); }

    Uint32 size() const { return body_ ? static_cast<Uint32>(body_->cells.size()) : 0; }
    Uint32 getCapacity() const { return body_ ? static_cast<Uint32>(body_->cells.capacity()) : 0; }
    const T* getData() const {
        return body_ ? reinterpret_cast<const T*>(body_->cells.data()) : nullptr;
    }

    T& operator[](Uint32 index) {
        Check(index, size());
        return ValueOf(Editable()[index]);
    }
    const T& operator[](Uint32 index) const {
        Check(index, size());
        return ValueOf(body_->cells[index]);
    }

    void append(const T& x) {
        if (body_ && body_.IsUnique()) {
            body_->cells.push_back(x);
            return;
        }
        const T copy = x;  // may be an element of this very array
        Editable().push_back(copy);
    }
    void append(T&& x) { Editable().push_back(std::move(x)); }
    void append(const T* x, Uint32 size) { insert(this->size(), x, size); }
    void appendArray(const Array<T>& x) {
        const Array<T> copy = x;
        append(copy.getData(), copy.size());
    }
    void prepend(const T& x) { insert(0, &x, 1); }
    void prepend(const T* x, Uint32 size) { insert(0, x, size); }
    void insert(Uint32 index, const T& x) { insert(index, &x, 1); }
    void insert(Uint32 index, const T* x, Uint32 size) {
        if (index > this->size()) {
            throw IndexOutOfBoundsException();
        }
        const std::vector<Cell> copy(x, x + size);
        Editable().insert(Editable().begin() + index, copy.begin(), copy.end());
    }
    void remove(Uint32 index) { remove(index, 1); }
    void remove(Uint32 index, Uint32 size) {
        Check(index, this->size());
        const Uint32 end = size > this->size() - index ? this->size() : index + size;
        Editable().erase(Editable().begin() + index, Editable().begin() + end);
    }

private:
    using Body = detail::ArrayBody<T>;
    using Cell = typename Body::Cell;

    static void Check(Uint32 index, Uint32 size) {
        if (index >= size) {
            throw IndexOutOfBoundsException();
        }
    }
    static T& ValueOf(T& cell) { return cell; }
    static const T& ValueOf(const T& cell) { return cell; }
    static Boolean& ValueOf(detail::BooleanCell& cell) { return cell.value; }
    static const Boolean& ValueOf(const detail::BooleanCell& cell) { return cell.value; }

    detail::ArenaVector<Cell>& Editable() {
        if (!body_) {
            body_ = detail::Shared<Body>(new Body);
        } else if (!body_.IsUnique()) {
            body_ = detail::Shared<Body>(new Body(*body_));
        }
        return body_->cells;
    }

    detail::Shared<Body> body_;
};

PEGASUS_NAMESPACE_END
