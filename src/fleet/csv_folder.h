// The records of a run as CSV files, one for each kind and one for failures.
#pragma once

#include <fstream>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "fleet/run.h"

namespace fleet {

/// Writes the records of each host together, as soon as it was read. What cannot be written is
/// reported once.
class CsvFolder : public DocumentSink {
public:
    /// Makes the files, with their headings, in a folder that is there. `failed` is called with
    /// the reason, once, on the thread that met it. Throws std::system_error when a file cannot be
    /// made.
    CsvFolder(const std::string& folder, const std::vector<const schema::RecordKind*>& kinds,
              std::function<void(const std::string&)> failed);
    void Take(const HostEntry& entry, const inventory::Document& document) override;

private:
    std::ofstream Opened(const std::string& path, const std::string& header);
    void Append(std::ofstream& file, const std::string& rows);

    std::vector<std::pair<const schema::RecordKind*, std::ofstream>> files_;
    std::ofstream failures_;
    const std::function<void(const std::string&)> failed_;
    bool has_failed_ = false;
};

}  // namespace fleet
