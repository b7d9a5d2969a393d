// Records of one kind, for those who need not know which.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>

#include "schema/cell.h"
#include "schema/field.h"

namespace schema {

enum class Shape { kOneRecord, kList };

class Records;

/// What there is to say about a kind of record.
class RecordKind {
public:
    const char* name;        ///< in all outputs
    const char* title;       ///< for people
    const char* name_space;  ///< of CIM
    const char* class_name;  ///< that is enumerated; the first, where there are several
    Shape shape = Shape::kList;

    /// Those that outputs show, in their order.
    virtual std::span<const Field> fields() const = 0;
    /// No records; one empty record where there is always one.
    virtual std::unique_ptr<Records> MakeRecords() const = 0;

protected:
    constexpr RecordKind(const char* name_, const char* title_, const char* name_space_,
                         const char* class_name_, Shape shape_)
        : name(name_),
          title(title_),
          name_space(name_space_),
          class_name(class_name_),
          shape(shape_) {}
    constexpr ~RecordKind() = default;
};

/// Not safe for changes from two threads.
class Records {
public:
    virtual ~Records() = default;
    virtual const RecordKind& kind() const = 0;
    virtual std::size_t size() const = 0;
    /// The value of a field, by its place in the kind's fields().
    virtual Cell At(std::size_t record, std::size_t field) const = 0;
    /// Appends an empty record.
    virtual void Append() = 0;
    /// Gives a field the record's text for the value.
    virtual void Set(std::size_t record, std::size_t field, const Cell& value) = 0;
};

/// The place of a public field in its kind; the number of fields when there is none of the name.
std::size_t PlaceOf(const RecordKind& kind, std::string_view field_name);

}  // namespace schema
