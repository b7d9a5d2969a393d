// What an earlier run has written: one document a line (ndjson).
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace fleet {

/// A line of the file.
struct PastLine {
    std::string host;  ///< as HostEntry::Name() gives it, in lower case
    bool is_ok = false;
    std::uint64_t offset = 0;
    std::uint64_t size = 0;  ///< with its line break
};

struct PastRun {
    std::vector<PastLine> lines;
    /// Of the whole lines; a torn one after them, which a run that was killed leaves, is not
    /// counted.
    std::uint64_t size = 0;

    /// Hosts that need not be read again: a line of them is ok.
    std::unordered_set<std::string> Done() const;
};

/// Throws std::runtime_error, with a text for people, when the file cannot be read or a whole line
/// of it is no document.
PastRun ReadPastRun(const std::string& path);

/// What makes a host one.
std::string HostKey(const std::string& name);

/// Rewrites the file without the lines that newer ones replace: of each host the last ok line
/// stays, else the last one. The file is replaced as a whole, or stays as it was. Throws
/// std::system_error.
void DropReplacedLines(const std::string& path);

}  // namespace fleet
