// Where the documents of a fleet's run go.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "cli/fleet_options.h"
#include "cli/fleet_output_file.h"
#include "cli/fleet_progress.h"
#include "fleet/past_run.h"
#include "fleet/run.h"
#include "fleet/summary.h"

namespace command {

/// Gives each document to the output that the options name, and to the summary.
class FleetOutputs : public fleet::DocumentSink {
public:
    /// `failed` is called once when an output takes no more. Throws UsageError when an output
    /// cannot be made.
    FleetOutputs(const FleetOptions& options, const fleet::PastRun& past,
                 const std::vector<fleet::HostEntry>& hosts, FleetProgress& progress,
                 std::function<void()> failed);

    void Take(const fleet::HostEntry& entry, const inventory::Document& document) override;

    /// After the last document. Throws CommandError when one could not be written.
    void Finish();

    fleet::Summary& summary() { return summary_; }

private:
    std::unique_ptr<DocumentSink> MakeSink(const FleetOptions& options,
                                           const std::vector<fleet::HostEntry>& hosts,
                                           FleetProgress& progress);

    std::function<void(const std::string&)> note_problem_;
    std::string problem_;
    std::unique_ptr<OutputFile> file_;
    std::unique_ptr<DocumentSink> sink_;
    fleet::Summary summary_;
};

}  // namespace command
