// Files that are written whole or not at all.
#pragma once

#include <memory>
#include <ostream>
#include <streambuf>
#include <string>

namespace outputs {

/// A file as it is written: beside its place until Commit moves it there. Until then, what was in
/// its place stays, and the destructor removes it. A symbolic link is followed.
/// What is no regular file, such as a device, is written to as it is.
class WholeFile {
public:
    /// Throws std::system_error when it cannot be made.
    explicit WholeFile(const std::string& path);
    ~WholeFile();
    WholeFile(const WholeFile&) = delete;
    WholeFile& operator=(const WholeFile&) = delete;

    std::ostream& stream() { return stream_; }

    /// Once, at the end. Throws std::system_error when not all of it could be written, moved to its
    /// place and made to last.
    void Commit();

private:
    class Buffer;

    std::string path_;
    std::string temporary_;  ///< empty when the path itself is written to
    std::unique_ptr<Buffer> buffer_;
    std::ostream stream_{nullptr};
};

/// Whether a file could be made at the path now; the reason in words otherwise, and nothing when it
/// could.
std::string WhyNotWritable(const std::string& path);

}  // namespace outputs
