// Writes an inventory for people or for programs.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "inventory/section_reading.h"

namespace command {

/// Begin, then each section in its order, then End. What has been read is written as soon as the
/// format allows.
class Printer {
public:
    virtual ~Printer() = default;
    /// With the failures that connecting met.
    virtual void Begin(const std::string& host, std::uint16_t port,
                       const std::vector<Zentar::Failure>& failures) = 0;
    virtual void Print(const inventory::SectionReading& reading) = 0;
    virtual void End() = 0;
};

/// Both write to a stream that outlives them. As text nothing is written of a host that was not
/// asked for any section.
std::unique_ptr<Printer> MakeTextPrinter(std::ostream& out);
std::unique_ptr<Printer> MakeJsonPrinter(std::ostream& out);

}  // namespace command
