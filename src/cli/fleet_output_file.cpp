#include "cli/fleet_output_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "cli/command_error.h"

namespace command {

namespace {

bool IsSameFile(const std::string& a, const std::string& b) {
    std::error_code error;
    return !a.empty() && !b.empty() && std::filesystem::equivalent(a, b, error);
}

}  // namespace

OutputFile::OutputFile(const FleetOptions& options, const fleet::PastRun& past)
    : path_(options.output), is_continued_(IsSameFile(options.output, options.resume)) {
    descriptor_ = open(path_.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    if (descriptor_ < 0) {
        throw UsageError("cannot write --output " + path_ + ": " +
                         std::system_category().message(errno));
    }
    if (flock(descriptor_, LOCK_EX | LOCK_NB) != 0) {
        close(descriptor_);
        throw UsageError("another run writes to --output " + path_ +
                         "; wait for it, or give another file");
    }
    // What cannot be cut, such as a pipe, has nothing to be cut off.
    const off_t size = is_continued_ ? static_cast<off_t>(past.size) : 0;
    static_cast<void>(!ftruncate(descriptor_, size));
}

OutputFile::~OutputFile() { close(descriptor_); }

void OutputFile::Finish() const {
    if (is_continued_) {
        fleet::DropReplacedLines(path_);
    }
}

}  // namespace command
