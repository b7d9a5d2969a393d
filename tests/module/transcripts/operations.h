// The operations of the facade, each with its result as text.
#pragma once

#include <string>
#include <vector>

#include "module/exsi/kalvex.h"

namespace transcripts {

struct Operation {
    const char* topic;  ///< for file names
    const char* call;
    std::string (*run)(Zentar::Agentless::Kalvex& host);
};

/// All of them; the one that spoils the others, GetPCIInfo, is last.
const std::vector<Operation>& Operations();

}  // namespace transcripts
