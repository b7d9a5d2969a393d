// Words for the codes of the PCI inventory: PCI base classes (PCI Code and ID Assignment), SMBIOS
// system slots (DSP0134, structure type 9) and the CIM OperationalStatus value map.
//
// Callers of the module receive these words, so their misspellings, duplicates and gaps stay as
// they are. All functions are pure; a code without a word gives empty text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace schema {

/// The word for a PCI base class in decimal, or nothing outside 0 to 255 and for text that does not
/// begin with a number.
std::optional<std::string_view> PciBaseClassWord(const std::string& code);

// Looked up by the exact text: codes in decimal without leading zeros, sign or blanks.
std::string DecodeConnectorType(const std::string& code);
std::string DecodeOperationalStatus(const std::string& code);

// Looked up by the text's leading decimal number; text without one counts as 0.
std::string DecodeSlotLength(const std::string& code);
std::string DecodeMaxDataWidth(const std::string& code);
std::string DecodeCurrentUsage(const std::string& code);
std::string DecodeVccMixedVoltageSupport(const std::string& code);

}  // namespace schema
