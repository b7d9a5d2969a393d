// The pairs of CIM_ComputerSystem's parallel arrays IdentifyingDescriptions and
// OtherIdentifyingInfo that name the machine.
#pragma once

#include <span>
#include <string>

#include "common/records/host_records.h"

namespace Zentar::Agentless {

/// What to log about a field that an identifying text has set.
struct IdentifyingField {
    const char* label;
    std::string ZentarAgentless::ComputerSystem::*field;
};

/// One recognised description, compared as a whole and case-sensitively.
struct IdentifyingRule {
    const char* description;
    void (*store)(ZentarAgentless::ComputerSystem& record, const std::string& info);
    std::span<const IdentifyingField> fields;
};

/// All recognised descriptions, in the order in which they are tried.
std::span<const IdentifyingRule> IdentifyingRules();

}  // namespace Zentar::Agentless
