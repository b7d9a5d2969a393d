// How the worker reads a list: one class, its wanted properties, and where their texts go.
#pragma once

#include <Pegasus/Client/CIMClient.h>

#include <span>
#include <string>
#include <utility>
#include <vector>

#include "schema/kind.h"

namespace Zentar::Agentless {

/// What the log says of a list query.
struct ListQuery {
    const char* trace;    ///< on entry
    const char* failure;  ///< when the class could not be enumerated
};

/// Takes the instances of a list query.
class RowSink {
public:
    virtual ~RowSink() = default;
    virtual const schema::RecordKind& kind() const = 0;
    /// One row for each text that Add gets.
    virtual std::span<const schema::Field> rows() const = 0;
    /// So many instances will be added.
    virtual void Expect(std::size_t count) = 0;
    /// With the texts of the rows, null where a row is no property; they may be moved from.
    virtual void Add(std::span<std::string* const> texts, Pegasus::CIMInstance& instance) = 0;
};

/// What is to be done to a record after its properties: nothing.
struct NothingMore {
    template <class Record>
    void operator()(Pegasus::CIMInstance& /*instance*/, Record& /*record*/) const {}
};

/// Appends a record for each instance. `complete` finishes it before it is appended.
template <class Record, std::size_t count, class Complete>
class RecordSink final : public RowSink {
public:
    RecordSink(const schema::KindOf<Record, count>& kind, std::vector<Record>& records,
               Complete complete)
        : kind_(kind), records_(records), complete_(complete) {}

    const schema::RecordKind& kind() const override { return kind_; }
    std::span<const schema::Field> rows() const override { return kind_.all_fields(); }
    void Expect(std::size_t more) override { records_.reserve(records_.size() + more); }

    void Add(std::span<std::string* const> texts, Pegasus::CIMInstance& instance) override {
        Record record;
        for (std::size_t row = 0; row < count; ++row) {
            if (texts[row] != nullptr && rows()[row].is_kept) {
                kind_.Store(row, std::move(*texts[row]), record);
            }
        }
        complete_(instance, record);
        records_.push_back(std::move(record));
    }

private:
    const schema::KindOf<Record, count>& kind_;
    std::vector<Record>& records_;
    Complete complete_;
};

}  // namespace Zentar::Agentless
