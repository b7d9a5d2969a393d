#include "schema/decoders/state_decoders.h"

#include <cstdlib>
#include <limits>
#include <span>

namespace schema {

namespace {

constexpr int kLowest = std::numeric_limits<int>::min();
constexpr int kHighest = std::numeric_limits<int>::max();

/// A word and the codes, first to last, that it stands for.
struct CodeRange {
    int first;
    int last;
    const char* word;
};

/// The word of the first row that holds the code.
std::string Decode(const std::string& text, std::span<const CodeRange> rows) {
    const int code = std::atoi(text.c_str());
    for (const CodeRange& row : rows) {
        if (code >= row.first && code <= row.last) {
            return row.word;
        }
    }
    return {};
}

constexpr CodeRange kEnabledState[] = {
    {0, 0, "Unknown"},
    {1, 1, "Other"},
    {2, 2, "Enabled"},
    {3, 3, "Disabled"},
    {4, 4, "Shutting Down"},
    {5, 5, "Not Applicable"},
    {6, 6, "Enabled but Offline"},
    {7, 7, "In Test"},
    {8, 8, "Deferred"},
    {9, 9, "Quiesce"},
    {10, 10, "Starting"},
    {11, 32767, "DMTF Reserved"},
    {32768, 65535, "Vendor Reserved"},
};

constexpr CodeRange kRequestedState[] = {
    {0, 0, "Unknown"},
    {2, 2, "Enabled"},
    {3, 3, "Disabled"},
    {4, 4, "Shut Down"},
    {5, 5, "No Change"},
    {6, 6, "Offline"},
    {7, 7, "Test"},
    {8, 8, "Deferred"},
    {9, 9, "Quiesce"},
    {10, 10, "Reboot"},
    {11, 11, "Reset"},
    {12, 12, "Not Applicable"},
    {13, 32767, "DMTF Reserved"},
    {32768, 65535, "Vendor Reserved"},
};

constexpr CodeRange kTransitioningToState[] = {
    {0, 0, "Unknown"},
    {2, 2, "Enabled"},
    {3, 3, "Disabled"},
    {4, 4, "Shut Down"},
    {5, 5, "No Change"},
    {6, 6, "Offline"},
    {7, 7, "Test"},
    {8, 8, "Defer"},
    {9, 9, "Quiesce"},
    {10, 10, "Reboot"},
    {11, 11, "Reset"},
    {12, 12, "Not Applicable"},
    {kLowest, kHighest, "DMTF Reserved"},
};

constexpr CodeRange kAvailableRequestedStates[] = {
    {2, 2, "Enabled"},
    {3, 3, "Disabled"},
    {4, 4, "Shut Down"},
    {6, 6, "Offline"},
    {7, 7, "Test"},
    {8, 8, "Defer"},
    {9, 9, "Quiesce"},
    {10, 10, "Reboot"},
    {11, 11, "Reset"},
    {12, 12, "Not Applicable"},
    {13, kHighest, "DMTF Reserved"},
};

constexpr CodeRange kProtocolIFType[] = {
    {4096, 4096, "IPv4"},
    {4097, 4097, "IPv6"},
    {4098, 4098, "IPv4/v6"},
};

}  // namespace

std::string GetEnabledState(const std::string& code) { return Decode(code, kEnabledState); }

std::string GetRequestedState(const std::string& code) { return Decode(code, kRequestedState); }

std::string GetTransitioningToState(const std::string& code) {
    return Decode(code, kTransitioningToState);
}

std::string GetAvailableRequestedStates(const std::string& code) {
    return Decode(code, kAvailableRequestedStates);
}

std::string GetProtocolIFType(const std::string& code) { return Decode(code, kProtocolIFType); }

}  // namespace schema
