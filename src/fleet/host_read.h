// Reads one host of a fleet.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "common/cancel/cancel_handle.h"
#include "fleet/task.h"
#include "inventory/document.h"
#include "inventory/sections.h"

namespace fleet {

/// How every host of a run is read.
struct ReadingOptions {
    std::vector<inventory::Section> sections;
    std::chrono::milliseconds connect_limit{5'000};
    std::chrono::milliseconds request_limit{60'000};
    std::chrono::milliseconds host_limit{600'000};  ///< for good, whatever the host does
    bool is_strict = false;
    std::string log_folder;  ///< for a log of each host's own; empty: the common log
    Zentar::CancelHandle cancel;
};

/// Blocks, at most for the host's limit. Whatever happens gives a document. `answered` is called
/// when the first section was read, which is when the host has accepted the account.
inventory::Document ReadHost(const Task& task, const ReadingOptions& options,
                             const std::function<void()>& answered);

/// The document of a host that was not asked, and why.
inventory::Document Untried(const Task& task, const ReadingOptions& options,
                            Zentar::FailureKind kind, const std::string& reason);

/// Whether the host refused the account.
bool HasRefused(const inventory::Document& document);

/// Whether nothing was read for a reason that may pass: unreachable, timed out, busy.
bool MayPass(const inventory::Document& document);

}  // namespace fleet
