// The hosts of a run as a table for people, a row as soon as each is read.
#pragma once

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <vector>

#include "fleet/run.h"

namespace fleet {

class HostTable : public DocumentSink {
public:
    /// Fits `columns` of a terminal. `around` gets each piece of output to call.
    HostTable(const std::vector<HostEntry>& hosts, std::size_t columns, std::ostream& out,
              std::function<void(const std::function<void()>&)> around);
    void WriteHeadings();
    void Take(const HostEntry& entry, const inventory::Document& document) override;

private:
    std::vector<std::size_t> widths_;
    std::ostream& out_;
    const std::function<void(const std::function<void()>&)> around_;
};

}  // namespace fleet
