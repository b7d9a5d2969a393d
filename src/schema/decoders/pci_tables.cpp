#include "schema/decoders/pci_tables.h"

#include <cstdlib>
#include <span>

#include "schema/decoders/leading_number.h"

namespace schema {

namespace {

constexpr std::string_view kBaseClasses[] = {
    "Pre 2.0",
    "Mass Storage",
    "Network",
    "Display",
    "Multimedia",
    "Memory",
    "Bridge",
    "Simple Communications",
    "Base Peripheral",
    "Input",
    "Docking Station",
    "Processor",
    "Serial Bus",
    "Wireless",
    "Intelligent I/O",
    "Satellite Communication",
    "Encryption/Decryption",
    "Data Acquisition and Signal Processing",
};
constexpr int kLastBaseClass = 17;
constexpr int kLastReservedBaseClass = 254;
constexpr int kOtherBaseClass = 255;

/// A word and the exact text of its code.
struct KeyedWord {
    std::string_view key;
    std::string_view word;
};

constexpr KeyedWord kConnectorTypes[] = {
    {"0", "Reserved"},
    {"1", "Other"},
    {"2", "Unknown"},
    {"3", "ISA"},
    {"4", "MCA"},
    {"5", "EISA"},
    {"6", "PCI"},
    {"7", "PC Card (PCMCIA)"},
    {"8", "VL-VESA"},
    {"9", "Proprietary"},
    {"10", "Processor Card Slot"},
    {"11", "Proprietary Memory Card Slot"},
    {"12", "I/O Riser Card Slot"},
    {"13", "NuBus"},
    {"14", "PCI - 66MHz Capable"},
    {"15", "AGP"},
    {"16", "AGP 2X"},
    {"17", "AGP 4X"},
    {"18", "PCI-X"},
    {"19", "AGP 8X"},
    {"20", "M.2 Socket 1-DP (Mechanical Key A)"},
    {"21", "M.2 Socket 1-SD (Mechanical Key E)"},
    {"22", "M.2 Socket 2 (Mechanical Key B)"},
    {"23", "M.2 Socket 3 (Mechanical Key M)"},
    {"24", "MXM Type I"},
    {"25", "MXM Type II"},
    {"26", "MXM Type III (standard connector)"},
    {"27", "MXM Type III (HE connector)"},
    {"28", "MXM Type IV"},
    {"29", "MXM 3.0 Type A"},
    {"30", "MXM 3.0 Type B"},
    {"31", "PCI Express Gen 2 SFF-8639"},
    {"32", "PCI Express Gen 3 SFF-8639"},
    {"33", "PCI Express Mini 52-pin"},
    {"34", "PCI Express Mini 52-pin"},
    {"35", "PCI Express Mini 76-pin"},
    {"160", "PC-98/C20"},
    {"161", "PC-98/C24"},
    {"162", "PC-98/E"},
    {"163", "PC-98/Local Bus"},
    {"164", "PC-98/Card"},
    {"165", "PCI Express"},
    {"166", "PCI Express x1"},
    {"167", "PCI Express x2"},
    {"168", "PCI Express x4"},
    {"169", "PCI Express x8"},
    {"170", "PCI Express x16"},
    {"171", "PCI Express Gen 2"},
    {"172", "PCI Express Gen 2 x1"},
    {"173", "PCI Express Gen 2 x2"},
    {"174", "PCI Express Gen 2 x4"},
    {"175", "PCI Express Gen 2 x8"},
    {"176", "PCI Express Gen 2 x16"},
    {"177", "PCI Express Gen 3"},
    {"178", "PCI Express Gen 3 x1"},
    {"179", "PCI Express Gen 3 x2"},
    {"180", "PCI Express Gen 3 x4"},
    {"181", "PCI Express Gen 3 x8"},
    {"182", "PCI Express Gen 3 x16"},
    {"184", "PCI Express Gen 4"},
    {"185", "PCI Express Gen 4 x1"},
    {"186", "PCI Express Gen 4 x2"},
    {"187", "PCI Express Gen 4 x4"},
    {"188", "PCI Express Gen 4 x8"},
    {"189", "PCI Express Gen 4 x16"},
    {"190", "PCI Express Gen 5"},
    {"191", "PCI Express Gen 5 x1"},
    {"192", "PCI Express Gen 5 x2"},
    {"193", "PCI Express Gen 5 x4"},
    {"194", "PCI Express Gen 5 x8"},
    {"195", "PCI Express Gen 5 x16"},
};

// The last two keys are the value map's own range markers, compared as literal texts.
constexpr KeyedWord kOperationalStatuses[] = {
    {"0", "Unknown"},
    {"1", "Other"},
    {"2", "OK"},
    {"3", "Degraded"},
    {"4", "Stressed"},
    {"5", "Predictive Failure"},
    {"6", "Error"},
    {"7", "Non-Recoverable Error"},
    {"8", "Starting"},
    {"9", "Stopping"},
    {"10", "Stopped"},
    {"11", "In Service"},
    {"12", "No Contact"},
    {"13", "Lost Communication"},
    {"14", "Aborted"},
    {"15", "Dormant"},
    {"16", "Supporting Entity in Error"},
    {"17", "Completed"},
    {"18", "Power Mode"},
    {"..", "DMTF Reserved"},
    {"0x8000..", "Vendor Reserved"},
};

constexpr std::string_view kSlotLengths[] = {
    "Reserved",
    "Other",
    "Unknown",
    "Short",
    "Long",
    "2.5\" drive from factor",
    "3.5\" drive from factor",
};

// The first word is that of code 1.
constexpr std::string_view kMaxDataWidths[] = {
    "Other",    "Unknown",  "8 bits",   "16 bits",  "32 bits",    "64 bits",    "128 bits",
    "1x or x1", "2x or x2", "4x or x4", "8x or x8", "12x or x12", "16x or x16", "32x or x32",
};

constexpr std::string_view kCurrentUsages[] = {
    "Reserved", "Other", "Unknown", "Available", "In use", "Unavailable",
};

constexpr std::string_view kVoltages[] = {"Unknown", "Other", "3.3V", "5V"};

std::string WordByKey(const std::string& key, std::span<const KeyedWord> table) {
    for (const KeyedWord& row : table) {
        if (row.key == key) {
            return std::string(row.word);
        }
    }
    return {};
}

std::string WordByNumber(const std::string& code, int first,
                         std::span<const std::string_view> words) {
    const long index = long{std::atoi(code.c_str())} - first;
    if (index < 0 || index >= static_cast<long>(words.size())) {
        return {};
    }
    return std::string(words[static_cast<std::size_t>(index)]);
}

}  // namespace

std::optional<std::string_view> PciBaseClassWord(const std::string& code) {
    const std::optional<std::int32_t> number = LeadingNumber(code);
    if (!number || *number < 0 || *number > kOtherBaseClass) {
        return std::nullopt;
    }
    if (*number <= kLastBaseClass) {
        return kBaseClasses[*number];
    }
    return *number <= kLastReservedBaseClass ? "PCI Reserved" : "Other";
}

std::string DecodeConnectorType(const std::string& code) {
    return WordByKey(code, kConnectorTypes);
}

std::string DecodeOperationalStatus(const std::string& code) {
    return WordByKey(code, kOperationalStatuses);
}

std::string DecodeSlotLength(const std::string& code) {
    return WordByNumber(code, 0, kSlotLengths);
}

std::string DecodeMaxDataWidth(const std::string& code) {
    return WordByNumber(code, 1, kMaxDataWidths);
}

std::string DecodeCurrentUsage(const std::string& code) {
    return WordByNumber(code, 0, kCurrentUsages);
}

std::string DecodeVccMixedVoltageSupport(const std::string& code) {
    return WordByNumber(code, 0, kVoltages);
}

}  // namespace schema
