// A kind of record with its type: one row for each field, which the compiler compares with the
// record's members.
#pragma once

#include <algorithm>
#include <array>
#include <boost/pfr/tuple_size.hpp>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "schema/decoders/leading_number.h"
#include "schema/records.h"

namespace schema {

template <class Record>
using Member = std::variant<std::string Record::*, std::uint64_t Record::*, std::int32_t Record::*>;

/// A member of the record, and what there is to say about it.
template <class Record>
struct Row {
    Member<Record> member;
    Field field;
};

/// What a kind is, but for its fields.
struct KindHead {
    const char* name;
    const char* title;
    const char* name_space;
    const char* class_name;
    Shape shape = Shape::kList;
    /// Members that have no row, since nothing fills them.
    std::size_t spares = 0;
};

namespace internal {

/// At compile time, where `what` stands in the error message.
consteval void Require(bool is_right, const char* what) {
    if (!is_right) {
        throw what;
    }
}

constexpr bool IsPublic(const Field& field) { return *field.name != '\0'; }

constexpr bool HasText(const char* text) { return *text != '\0'; }

}  // namespace internal

template <class Record, std::size_t count>
class RecordsOf;

template <class Record, std::size_t count>
class KindOf final : public RecordKind {
public:
    using TypedRecords = RecordsOf<Record, count>;

    consteval KindOf(const KindHead& head, const Row<Record> (&rows)[count])
        : RecordKind(head.name, head.title, head.name_space, head.class_name, head.shape) {
        for (std::size_t i = 0; i < count; ++i) {
            members_[i] = rows[i].member;
            fields_[i] = rows[i].field;
        }
        public_count_ = static_cast<std::size_t>(
            std::find_if_not(fields_.begin(), fields_.end(), internal::IsPublic) - fields_.begin());
        Sort();
        Check(head.spares);
    }

    std::span<const Field> fields() const override { return all_fields().first(public_count_); }

    std::unique_ptr<Records> MakeRecords() const override;

    /// Also those that no output shows.
    constexpr std::span<const Field> all_fields() const { return fields_; }

    /// Gives the member of a row the property's text.
    void Store(std::size_t row, std::string&& text, Record& record) const {
        const Field& field = fields_[row];
        if (const auto* member = std::get_if<std::string Record::*>(&members_[row])) {
            record.** member = field.decode == nullptr ? std::move(text) : field.decode(text);
        } else {
            StoreNumber(row, LeadingNumber(text).value_or(0), record);
        }
    }

    Cell At(std::size_t row, const Record& record) const {
        if (const auto* member = std::get_if<std::string Record::*>(&members_[row])) {
            return CellOf(fields_[row].type, record.**member);
        }
        return NumberAt(row, record);
    }

    void Set(std::size_t row, const Cell& value, Record& record) const {
        if (const auto* member = std::get_if<std::string Record::*>(&members_[row])) {
            record.** member = TextOf(value);
        } else if (const auto* number = std::get_if<std::int64_t>(&value)) {
            StoreNumber(row, *number, record);
        }
    }

    /// Calls `write` for each field of the log's dump, in its order, with the label and with what
    /// writes the member into a stream.
    template <class Write>
    void ForEachLogged(const Record& record, Write write) const {
        for (std::size_t i = 0; i < logged_count_; ++i) {
            const std::size_t row = logged_[i];
            write(fields_[row].log_label, [this, row, &record](std::ostream& stream) {
                std::visit([&](auto member) { stream << record.*member; }, members_[row]);
            });
        }
    }

private:
    /// Hosts count in signed 32-bit integers, which arrive sign-extended.
    void StoreNumber(std::size_t row, std::int64_t number, Record& record) const {
        if (const auto* member = std::get_if<std::uint64_t Record::*>(&members_[row])) {
            record.** member = static_cast<std::uint64_t>(number);
        } else if (const auto* small = std::get_if<std::int32_t Record::*>(&members_[row])) {
            record.** small = static_cast<std::int32_t>(number);
        }
    }

    Cell NumberAt(std::size_t row, const Record& record) const {
        if (const auto* member = std::get_if<std::uint64_t Record::*>(&members_[row])) {
            return static_cast<std::int64_t>(record.**member);
        }
        return std::int64_t{record.*std::get<std::int32_t Record::*>(members_[row])};
    }

    consteval void Sort() {
        for (std::size_t i = 0; i < count; ++i) {
            if (fields_[i].log_label != nullptr) {
                logged_[logged_count_++] = i;
            }
        }
        std::sort(logged_.begin(), logged_.begin() + logged_count_,
                  [this](std::size_t a, std::size_t b) {
                      return fields_[a].log_position < fields_[b].log_position;
                  });
    }

    consteval void Check(std::size_t spares) const {
        using internal::Require;
        Require(boost::pfr::tuple_size_v<Record> == count + spares,
                "each member of the record has one row, or is counted as a spare");
        for (std::size_t i = 0; i < count; ++i) {
            CheckRow(i);
            for (std::size_t j = 0; j < i; ++j) {
                Require(members_[i] != members_[j], "no member has two rows");
                Require(!internal::IsPublic(fields_[i]) ||
                            std::string_view(fields_[i].name) != fields_[j].name,
                        "no name is given twice");
            }
        }
        for (std::size_t i = 0; i < logged_count_; ++i) {
            Require(fields_[logged_[i]].log_position == static_cast<int>(i + 1),
                    "the log's positions count from 1");
        }
    }

    consteval void CheckRow(std::size_t row) const {
        using internal::HasText;
        using internal::Require;
        const Field& field = fields_[row];
        Require(internal::IsPublic(field) == (row < public_count_), "public fields come first");
        Require(!internal::IsPublic(field) || (HasText(field.heading) && HasText(field.meaning)),
                "a public field has a heading and a meaning");
        Require((field.source == Source::kNone) == !HasText(field.property),
                "a field that is read names its property");
        Require(!field.decode || field.type == Type::kText, "what is decoded is text");
    }

    std::array<Field, count> fields_{};
    std::array<Member<Record>, count> members_{};
    std::array<std::size_t, count> logged_{};  ///< rows, in the order of the log
    std::size_t logged_count_ = 0;
    std::size_t public_count_ = 0;
};

template <class Record, std::size_t count>
KindOf(const KindHead&, const Row<Record> (&)[count]) -> KindOf<Record, count>;

/// Records of a type, with their kind.
template <class Record, std::size_t count>
class RecordsOf final : public Records {
public:
    explicit RecordsOf(const KindOf<Record, count>& kind) : kind_(kind) {
        records.resize(kind.shape == Shape::kOneRecord ? 1 : 0);
    }

    const RecordKind& kind() const override { return kind_; }
    std::size_t size() const override { return records.size(); }
    Cell At(std::size_t record, std::size_t field) const override {
        return kind_.At(field, records[record]);
    }
    void Append() override { records.emplace_back(); }
    void Set(std::size_t record, std::size_t field, const Cell& value) override {
        kind_.Set(field, value, records[record]);
    }

    std::vector<Record> records;

private:
    const KindOf<Record, count>& kind_;
};

template <class Record, std::size_t count>
std::unique_ptr<Records> KindOf<Record, count>::MakeRecords() const {
    return std::make_unique<RecordsOf<Record, count>>(*this);
}

}  // namespace schema
