#include "schema/decoders/state_decoders.h"

#include <gtest/gtest.h>

namespace schema {
namespace {

/// One code and its word from each of the four state decoders.
struct StateWords {
    const char* code;
    const char* enabled;
    const char* requested;
    const char* transitioning;
    const char* available;
};

constexpr StateWords kStateWords[] = {
    {"0", "Unknown", "Unknown", "Unknown", ""},
    {"1", "Other", "", "DMTF Reserved", ""},
    {"2", "Enabled", "Enabled", "Enabled", "Enabled"},
    {"3", "Disabled", "Disabled", "Disabled", "Disabled"},
    {"4", "Shutting Down", "Shut Down", "Shut Down", "Shut Down"},
    {"5", "Not Applicable", "No Change", "No Change", ""},
    {"6", "Enabled but Offline", "Offline", "Offline", "Offline"},
    {"7", "In Test", "Test", "Test", "Test"},
    {"8", "Deferred", "Deferred", "Defer", "Defer"},
    {"9", "Quiesce", "Quiesce", "Quiesce", "Quiesce"},
    {"10", "Starting", "Reboot", "Reboot", "Reboot"},
    {"11", "DMTF Reserved", "Reset", "Reset", "Reset"},
    {"12", "DMTF Reserved", "Not Applicable", "Not Applicable", "Not Applicable"},
    {"13", "DMTF Reserved", "DMTF Reserved", "DMTF Reserved", "DMTF Reserved"},
    {"32767", "DMTF Reserved", "DMTF Reserved", "DMTF Reserved", "DMTF Reserved"},
    {"32768", "Vendor Reserved", "Vendor Reserved", "DMTF Reserved", "DMTF Reserved"},
    {"40000", "Vendor Reserved", "Vendor Reserved", "DMTF Reserved", "DMTF Reserved"},
    {"65535", "Vendor Reserved", "Vendor Reserved", "DMTF Reserved", "DMTF Reserved"},
    {"65536", "", "", "DMTF Reserved", "DMTF Reserved"},
    {"2147483647", "", "", "DMTF Reserved", "DMTF Reserved"},
    {"-1", "", "", "DMTF Reserved", ""},
    {"-2147483648", "", "", "DMTF Reserved", ""},
    {"", "Unknown", "Unknown", "Unknown", ""},
    {"Enabled", "Unknown", "Unknown", "Unknown", ""},
    {" 3", "Disabled", "Disabled", "Disabled", "Disabled"},
    {"2 3 6", "Enabled", "Enabled", "Enabled", "Enabled"},
    // Beyond 32 bits the low ones count, beyond 64 bits those of the nearest number.
    {"4294967298", "Enabled", "Enabled", "Enabled", "Enabled"},
    {"-4294967293", "Disabled", "Disabled", "Disabled", "Disabled"},
    {"4294967295", "", "", "DMTF Reserved", ""},
    {"2147483648", "", "", "DMTF Reserved", ""},
    {"-2147483649", "", "", "DMTF Reserved", "DMTF Reserved"},
    {"9223372036854775807", "", "", "DMTF Reserved", ""},
    {"99999999999999999999", "", "", "DMTF Reserved", ""},
    {"-9223372036854775808", "Unknown", "Unknown", "Unknown", ""},
    {"-99999999999999999999", "Unknown", "Unknown", "Unknown", ""},
};

TEST(StateDecoders, GiveTheWordOfEachCode) {
    for (const StateWords& row : kStateWords) {
        SCOPED_TRACE(row.code);
        EXPECT_EQ(GetEnabledState(row.code), row.enabled);
        EXPECT_EQ(GetRequestedState(row.code), row.requested);
        EXPECT_EQ(GetTransitioningToState(row.code), row.transitioning);
        EXPECT_EQ(GetAvailableRequestedStates(row.code), row.available);
    }
}

TEST(StateDecoders, NameOnlyTheIpInterfaceTypes) {
    EXPECT_EQ(GetProtocolIFType("4096"), "IPv4");
    EXPECT_EQ(GetProtocolIFType("4097"), "IPv6");
    EXPECT_EQ(GetProtocolIFType("4098"), "IPv4/v6");
    EXPECT_EQ(GetProtocolIFType("4294971392"), "IPv4");  // beyond 32 bits the low ones count
    for (const char* code : {"0", "1", "6", "4095", "4099", "-4096", ""}) {
        EXPECT_EQ(GetProtocolIFType(code), "") << code;
    }
}

}  // namespace
}  // namespace schema
