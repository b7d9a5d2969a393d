// What reading one host gave: every section with its status and records, and every failure. All
// outputs are made from it.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "common/records/failure.h"
#include "schema/records.h"

namespace inventory {

/// How reading went: of a section, or of the whole, which is never unavailable or skipped.
enum class Status {
    kOk,
    kPartial,      ///< some of it could not be read
    kUnavailable,  ///< the host answered that it has no such namespace or class
    kFailed,
    kSkipped,  ///< not asked for, for a reason that is among the failures
};

/// "ok", "partial", ...
const char* WordOf(Status status);

/// The records of one kind.
struct SectionResult {
    std::unique_ptr<schema::Records> records;  ///< never null
    Status status = Status::kOk;
    /// Why it is not whole; nothing when it is, or when memory ran out.
    std::optional<Zentar::FailureKind> cause{};
    /// What is missing is only what the host answered that it does not have.
    bool lacks_only_unavailable = false;

    const schema::RecordKind& kind() const { return records->kind(); }
    bool WasRead() const { return status == Status::kOk || status == Status::kPartial; }
};

/// A failure in words.
struct DocumentFailure {
    std::string section;  ///< empty for connecting
    Zentar::FailureKind kind{};
    std::int32_t code = 0;   ///< of CIM or HTTP; 0 without one
    std::string class_name;  ///< may be empty
    std::string message;     ///< for people, in part the host's words

    friend bool operator==(const DocumentFailure&, const DocumentFailure&) = default;
};

struct Document {
    std::string host;
    std::uint16_t port = 0;
    std::string transport;  ///< "http" or "https"
    std::chrono::system_clock::time_point started_at{};
    std::chrono::milliseconds duration{};
    Status status = Status::kOk;
    std::vector<SectionResult> sections;  ///< those that were chosen, in their order
    std::vector<DocumentFailure> failures;
    std::uint64_t dropped_failures = 0;  ///< older ones that were too many

    /// Null when it was not chosen.
    const SectionResult* Find(const schema::RecordKind& kind) const;
};

/// Of the whole: kOk when nothing failed. What the host does not have is no failure, unless
/// `is_strict`. kFailed when something failed and no section was read, not even in part.
Status StatusOfWhole(const std::vector<SectionResult>& sections, bool is_strict);

}  // namespace inventory
