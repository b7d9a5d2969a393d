// The first and the last line about a host: what it is, and what of it was read.
#pragma once

#include <string>

#include "inventory/document.h"

namespace outputs {

/// "esx01.example.com:5989  Contoso CS2460 M5  VMware ESXi 6.7.0 build 14320388", as far as it was
/// read. In part the host's words, as they came.
std::string HostLine(const inventory::Document& document);

/// "Read 9 of 11 sections in 1.5 s; not: pci_slots (WHY)."
std::string ReadingLine(const inventory::Document& document);

}  // namespace outputs
