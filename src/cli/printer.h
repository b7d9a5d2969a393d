// Writes an inventory for people or for programs.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>

#include "cli/sections.h"

namespace command {

/// Begin, then each section in its order, then End. What has been read is written as soon as the
/// format allows.
class Printer {
public:
    virtual ~Printer() = default;
    virtual void Begin(const std::string& host, std::uint16_t port) = 0;
    virtual void Print(const char* section, const SectionContent& content) = 0;
    virtual void End() = 0;
};

/// Both write to a stream that outlives them.
std::unique_ptr<Printer> MakeTextPrinter(std::ostream& out);
std::unique_ptr<Printer> MakeJsonPrinter(std::ostream& out);

}  // namespace command
