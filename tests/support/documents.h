// Documents made by hand.
#pragma once

#include <initializer_list>
#include <string_view>
#include <utility>
#include <vector>

#include "inventory/document.h"

namespace support {

/// One record, by the public names of its fields.
using RecordText = std::vector<std::pair<const char*, std::string_view>>;

/// A section whose records hold these texts, as CIM gives them.
inventory::SectionResult Section(const schema::RecordKind& kind,
                                 const std::vector<RecordText>& records,
                                 inventory::Status status = inventory::Status::kOk);

/// Of the host "esx01", port 5989, read in 1.5 s at 2026-11-22T05:00:15Z.
template <class... Sections>
inventory::Document DocumentOf(Sections... sections);

inventory::Document EmptyDocument();

template <class... Sections>
inventory::Document DocumentOf(Sections... sections) {
    inventory::Document document = EmptyDocument();
    (document.sections.push_back(std::move(sections)), ...);
    document.status = inventory::StatusOfWhole(document.sections, false);
    return document;
}

}  // namespace support
