// Which events of a document are wanted.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "inventory/document.h"
#include "inventory/sections.h"

namespace inventory {

/// An event whose time cannot be read may be new, so it passes `since`, and counts as one of the
/// newest.
struct EventFilter {
    std::optional<std::int64_t> since{};  ///< microseconds since 1970 in UTC; that time passes too
    std::optional<std::size_t> last{};    ///< how many of the newest

    bool IsSet() const { return since || last; }
};

/// The point in time of an ISO 8601 date, which begins at midnight UTC, or date with time and
/// offset, in microseconds since 1970 in UTC. Nothing for another text.
std::optional<std::int64_t> PointInTimeOf(std::string_view text);

/// Whether events are among what the sections give.
bool GiveEvents(std::span<const Section> sections);

/// Leaves the wanted events in the document, in their order.
void KeepEvents(const EventFilter& filter, Document& document);

}  // namespace inventory
