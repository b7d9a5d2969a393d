// Reads sections one after the other and prints each.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cli/command_error.h"
#include "cli/failure_report.h"
#include "cli/printer.h"
#include "cli/progress.h"
#include "inventory/section_reading.h"

namespace command {

class InventoryRun {
public:
    InventoryRun(Zentar::Agentless::Kalvex& host, Printer& printer, Progress& progress,
                 FailureReport& report)
        : host_(host), printer_(printer), progress_(progress), report_(report) {}

    /// When memory runs out, what was read stays printed, and the rest counts as failed.
    void Read(const std::vector<inventory::Section>& sections);

    ExitStatus Status() const;
    bool RanOutOfMemory() const { return ran_out_of_memory_; }

private:
    inventory::SectionReading ReadOrFail(const inventory::Section& section);

    Zentar::Agentless::Kalvex& host_;
    Printer& printer_;
    Progress& progress_;
    FailureReport& report_;
    bool ran_out_of_memory_ = false;
    bool has_failures_ = false;
    bool has_content_ = false;
};

}  // namespace command
