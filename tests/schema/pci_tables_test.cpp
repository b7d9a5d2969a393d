#include "schema/decoders/pci_tables.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "schema/decoders/leading_number.h"

namespace schema {
namespace {

struct CodeWord {
    const char* code;
    const char* word;
};

template <std::size_t count>
void ExpectWords(std::string (*decode)(const std::string&), const CodeWord (&rows)[count]) {
    for (const CodeWord& row : rows) {
        EXPECT_EQ(decode(row.code), row.word) << "code \"" << row.code << "\"";
    }
}

TEST(PciTables, BaseClassesHaveWordsFrom0To255) {
    const std::map<std::string, std::string> words = {
        {"0", "Pre 2.0"},
        {"1", "Mass Storage"},
        {"2", "Network"},
        {"3", "Display"},
        {"4", "Multimedia"},
        {"5", "Memory"},
        {"6", "Bridge"},
        {"7", "Simple Communications"},
        {"8", "Base Peripheral"},
        {"9", "Input"},
        {"10", "Docking Station"},
        {"11", "Processor"},
        {"12", "Serial Bus"},
        {"13", "Wireless"},
        {"14", "Intelligent I/O"},
        {"15", "Satellite Communication"},
        {"16", "Encryption/Decryption"},
        {"17", "Data Acquisition and Signal Processing"},
        {"18", "PCI Reserved"},
        {"254", "PCI Reserved"},
        {"255", "Other"},
        {" 2", "Network"},
        {"12abc", "Serial Bus"},
    };
    for (const auto& [code, word] : words) {
        EXPECT_EQ(PciBaseClassWord(code), word) << code;
    }
}

TEST(PciTables, OtherClassCodesHaveNoWord) {
    for (const char* code :
         {"256", "-1", "", "  ", "abc", "4294967298", "99999999999", "-99999999999"}) {
        EXPECT_EQ(PciBaseClassWord(code), std::nullopt) << code;
    }
}

/// The words of consecutive codes.
struct WordRun {
    int first_code;
    std::vector<std::string> words;
};

/// The codes of these runs have their words, and no other code has any.
void ExpectExactly(std::string (*decode)(const std::string&), const std::vector<WordRun>& runs) {
    std::map<int, std::string> expected;
    for (const WordRun& run : runs) {
        int code = run.first_code;
        for (const std::string& word : run.words) {
            expected[code++] = word;
        }
    }
    std::map<int, std::string> decoded;
    for (int code = 0; code <= 70000; ++code) {
        if (const std::string word = decode(std::to_string(code)); !word.empty()) {
            decoded[code] = word;
        }
    }
    EXPECT_EQ(decoded, expected);
}

TEST(PciTables, ConnectorTypesHaveTheseWords) {
    ExpectExactly(DecodeConnectorType,
                  {{0,
                    {"Reserved",
                     "Other",
                     "Unknown",
                     "ISA",
                     "MCA",
                     "EISA",
                     "PCI",
                     "PC Card (PCMCIA)",
                     "VL-VESA",
                     "Proprietary",
                     "Processor Card Slot",
                     "Proprietary Memory Card Slot",
                     "I/O Riser Card Slot",
                     "NuBus",
                     "PCI - 66MHz Capable",
                     "AGP",
                     "AGP 2X",
                     "AGP 4X",
                     "PCI-X",
                     "AGP 8X",
                     "M.2 Socket 1-DP (Mechanical Key A)",
                     "M.2 Socket 1-SD (Mechanical Key E)",
                     "M.2 Socket 2 (Mechanical Key B)",
                     "M.2 Socket 3 (Mechanical Key M)",
                     "MXM Type I",
                     "MXM Type II",
                     "MXM Type III (standard connector)",
                     "MXM Type III (HE connector)",
                     "MXM Type IV",
                     "MXM 3.0 Type A",
                     "MXM 3.0 Type B",
                     "PCI Express Gen 2 SFF-8639",
                     "PCI Express Gen 3 SFF-8639",
                     "PCI Express Mini 52-pin",
                     "PCI Express Mini 52-pin",
                     "PCI Express Mini 76-pin"}},
                   {160, {"PC-98/C20", "PC-98/C24", "PC-98/E", "PC-98/Local Bus", "PC-98/Card"}},
                   {165,
                    {"PCI Express", "PCI Express x1", "PCI Express x2", "PCI Express x4",
                     "PCI Express x8", "PCI Express x16"}},
                   {171,
                    {"PCI Express Gen 2", "PCI Express Gen 2 x1", "PCI Express Gen 2 x2",
                     "PCI Express Gen 2 x4", "PCI Express Gen 2 x8", "PCI Express Gen 2 x16"}},
                   {177,
                    {"PCI Express Gen 3", "PCI Express Gen 3 x1", "PCI Express Gen 3 x2",
                     "PCI Express Gen 3 x4", "PCI Express Gen 3 x8", "PCI Express Gen 3 x16"}},
                   {184,
                    {"PCI Express Gen 4", "PCI Express Gen 4 x1", "PCI Express Gen 4 x2",
                     "PCI Express Gen 4 x4", "PCI Express Gen 4 x8", "PCI Express Gen 4 x16"}},
                   {190,
                    {"PCI Express Gen 5", "PCI Express Gen 5 x1", "PCI Express Gen 5 x2",
                     "PCI Express Gen 5 x4", "PCI Express Gen 5 x8", "PCI Express Gen 5 x16"}}});
}

TEST(PciTables, ConnectorTypesAreLookedUpByTheExactText) {
    ExpectWords(DecodeConnectorType,
                {{"", ""}, {" 6", ""}, {"06", ""}, {"+6", ""}, {"0x6", ""}, {"6 ", ""}});
}

TEST(PciTables, OperationalStatusesHaveTheseWords) {
    ExpectExactly(DecodeOperationalStatus,
                  {{0,
                    {"Unknown", "Other", "OK", "Degraded", "Stressed", "Predictive Failure",
                     "Error", "Non-Recoverable Error", "Starting", "Stopping", "Stopped",
                     "In Service", "No Contact", "Lost Communication", "Aborted", "Dormant",
                     "Supporting Entity in Error", "Completed", "Power Mode"}}});
}

TEST(PciTables, OperationalStatusesAreLookedUpByTheExactText) {
    ExpectWords(DecodeOperationalStatus, {{"..", "DMTF Reserved"},
                                          {"0x8000..", "Vendor Reserved"},
                                          {"0x8000", ""},
                                          {"2 3", ""},
                                          {" 2", ""},
                                          {"", ""}});
}

TEST(PciTables, SlotLengthsAreIndexedByTheirNumber) {
    ExpectWords(DecodeSlotLength, {{"0", "Reserved"},
                                   {"1", "Other"},
                                   {"2", "Unknown"},
                                   {"3", "Short"},
                                   {"4", "Long"},
                                   {"5", "2.5\" drive from factor"},
                                   {"6", "3.5\" drive from factor"},
                                   {"", "Reserved"},
                                   {"none", "Reserved"},
                                   {" 4x", "Long"},
                                   {"7", ""},
                                   {"-1", ""},
                                   {"-2147483648", ""}});
}

TEST(PciTables, DataWidthsAreIndexedFromOne) {
    ExpectWords(DecodeMaxDataWidth, {{"1", "Other"},
                                     {"2", "Unknown"},
                                     {"3", "8 bits"},
                                     {"4", "16 bits"},
                                     {"5", "32 bits"},
                                     {"6", "64 bits"},
                                     {"7", "128 bits"},
                                     {"8", "1x or x1"},
                                     {"9", "2x or x2"},
                                     {"10", "4x or x4"},
                                     {"11", "8x or x8"},
                                     {"12", "12x or x12"},
                                     {"13", "16x or x16"},
                                     {"14", "32x or x32"},
                                     {"0", ""},
                                     {"", ""},
                                     {"15", ""},
                                     {"-2147483648", ""}});
}

TEST(PciTables, UsagesAndVoltagesAreIndexedByTheirNumber) {
    ExpectWords(DecodeCurrentUsage, {{"0", "Reserved"},
                                     {"1", "Other"},
                                     {"2", "Unknown"},
                                     {"3", "Available"},
                                     {"4", "In use"},
                                     {"5", "Unavailable"},
                                     {"6", ""}});
    ExpectWords(
        DecodeVccMixedVoltageSupport,
        {{"0", "Unknown"}, {"1", "Other"}, {"2", "3.3V"}, {"3", "5V"}, {"", "Unknown"}, {"4", ""}});
}

TEST(PciTables, IndexesBeyond32BitsAreTheLowOnes) {
    ExpectWords(DecodeSlotLength, {{"4294967300", "Long"},
                                   {"-4294967292", "Long"},
                                   {"2147483652", ""},
                                   {"99999999999999999999", ""},
                                   {"-99999999999999999999", "Reserved"}});
    ExpectWords(DecodeMaxDataWidth, {{"4294967297", "Other"}, {"4294967296", ""}});
    ExpectWords(DecodeCurrentUsage, {{"4294967300", "In use"}});
    ExpectWords(DecodeVccMixedVoltageSupport, {{"4294967299", "5V"}});
}

TEST(LeadingNumber, ReadsUpToTheFirstOtherCharacter) {
    EXPECT_EQ(LeadingNumber("42"), 42);
    EXPECT_EQ(LeadingNumber(" 7abc"), 7);
    EXPECT_EQ(LeadingNumber("-1"), -1);
    EXPECT_EQ(LeadingNumber("\v\f\r\n\t +5"), 5);
    EXPECT_EQ(LeadingNumber("0"), 0);
    EXPECT_EQ(LeadingNumber("1,000"), 1);
}

TEST(LeadingNumber, ClampsWhatDoesNotFit) {
    EXPECT_EQ(LeadingNumber("4294967296"), 2147483647);
    EXPECT_EQ(LeadingNumber("-4294967296"), -2147483647 - 1);
}

TEST(LeadingNumber, IsAbsentFromOtherText) {
    for (const char* text : {"", "  ", "abc", "x1", "-", "+", "+-1", "++1", "- 1"}) {
        EXPECT_EQ(LeadingNumber(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace schema
