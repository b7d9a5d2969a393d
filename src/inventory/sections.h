// The sections of an inventory that can be asked for: their names, their order, the records that
// each gives, and how it is read.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "inventory/document.h"
#include "schema/records.h"

namespace Zentar::Agentless {
class Kalvex;
}

namespace inventory {

struct Section {
    const char* name;
    /// Which records it gives.
    std::span<const schema::RecordKind* const> kinds;
    /// The facade's operation, with its result; records, one for each kind, are appended to.
    int (*read)(Zentar::Agentless::Kalvex& host, std::span<const SectionResult> results);
};

/// All sections, in the order in which they are read and shown. The last one moves the host object
/// to another namespace for good.
std::span<const Section> AllSections();

/// Null when there is none of this name.
const Section* FindSection(const std::string& name);

/// "system, os, ..." for messages.
std::string SectionNames();

/// The kinds of all sections, in their order.
std::vector<const schema::RecordKind*> AllKinds();

/// The kind of this name, or null.
const schema::RecordKind* FindKind(const std::string& name);

}  // namespace inventory
