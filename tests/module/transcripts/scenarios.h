// Hosts good and bad, and what is read from each.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "operations.h"
#include "simhost/server.h"

namespace transcripts {

struct Scenario {
    std::string name;  ///< of the transcript's file, without its ending
    std::vector<Operation> operations;

    simhost::Transport transport = simhost::Transport::kHttps;
    std::optional<simhost::Fault> fault;
    bool right_password = true;
    bool has_classes = true;
    bool has_namespaces = true;
    bool up = true;
};

inline constexpr const char* kUser = "root";
inline constexpr const char* kPassword = "pässwörd €";

/// Each operation on the built-in host, and all of them on a host that fails in each of many ways.
std::vector<Scenario> Scenarios();

}  // namespace transcripts
