// The file of a fleet's --output.
#pragma once

#include <string>

#include "cli/fleet_options.h"
#include "fleet/past_run.h"

namespace command {

/// Belongs to this run alone as long as it lives. When it is the file of --resume too, its whole
/// lines stay and a torn one after them is cut off; otherwise it is emptied.
class OutputFile {
public:
    /// Throws UsageError when it cannot be written, or another run writes to it.
    OutputFile(const FleetOptions& options, const fleet::PastRun& past);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    int descriptor() const { return descriptor_; }

    /// Leaves one line of each host, after the last was written. Throws std::system_error.
    void Finish() const;

private:
    const std::string path_;
    const bool is_continued_;
    int descriptor_ = -1;
};

}  // namespace command
