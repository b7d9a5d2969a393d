// Says on standard error why something could not be read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <unordered_map>
#include <vector>

#include "common/records/failure.h"
#include "inventory/document.h"

namespace command {

/// Collects failures by section and reports each distinct one once.
class FailureReport {
public:
    /// Notes why a section failed, was read only in part, or was not asked for.
    void Add(const std::string& section, const std::vector<Zentar::Failure>& failures);

    /// The failures of a whole document; those of connecting as the given section's.
    void Add(const std::string& connecting, const inventory::Document& document);

    /// One line per distinct failure: the sections it struck, what happened, what to try. Of many
    /// only the first are written, and how many more there are.
    void Write(std::ostream& out) const;

private:
    void Add(const std::string& section, Zentar::FailureKind kind, const std::string& description);

    struct Entry {
        std::string description;
        const char* advice;
        std::vector<std::string> sections;
    };
    std::vector<Entry> entries_;
    std::unordered_map<std::string, std::size_t> places_;  ///< of entries, by what makes them one
    std::uint64_t dropped_ = 0;
};

}  // namespace command
