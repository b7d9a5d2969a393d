#include "outputs/whole_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "common/platform/system_words.h"

namespace outputs {

namespace {

[[noreturn]] void ThrowSystemError(int error) {
    throw std::system_error(error, std::generic_category());
}

/// Where links lead; the path itself where nothing is.
std::string Resolved(const std::string& path) {
    std::error_code error;
    const std::filesystem::path resolved = std::filesystem::canonical(path, error);
    return error ? path : resolved.string();
}

bool IsSpecial(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode);
}

bool IsFolder(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

/// A new file in the folder of `path`, whose name it gives to `temporary`. -1, with errno, on
/// failure.
int OpenBeside(const std::string& path, std::string& temporary) {
    int descriptor = -1;
    for (int i = 0; descriptor < 0 && (i == 0 || errno == EEXIST); ++i) {
        const std::size_t name_at = path.rfind('/') + 1;
        temporary = path.substr(0, name_at) + ".kalvex-" + std::to_string(getpid()) + "-" +
                    std::to_string(i) + ".tmp";
        constexpr mode_t kForAll = 0666;  // less the umask
        descriptor = open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kForAll);
    }
    return descriptor;
}

}  // namespace

/// Remembers why the first write failed.
class WholeFile::Buffer : public std::streambuf {
public:
    explicit Buffer(int descriptor) : descriptor_(descriptor) {
        setp(bytes_.data(), bytes_.data() + bytes_.size());
    }
    ~Buffer() override { Close(); }

    /// The error number, or 0.
    int Finish(bool is_regular) {
        sync();
        if (error_ == 0 && is_regular && fsync(descriptor_) != 0) {
            error_ = errno;
        }
        Close();
        return error_;
    }

protected:
    int overflow(int character) override {
        if (sync() != 0) {
            return traits_type::eof();
        }
        return traits_type::eq_int_type(character, traits_type::eof())
                   ? 0
                   : sputc(traits_type::to_char_type(character));
    }

    int sync() override {
        for (const char* at = pbase(); error_ == 0 && at < pptr();) {
            const ssize_t written = write(descriptor_, at, static_cast<std::size_t>(pptr() - at));
            if (written >= 0) {
                at += written;
            } else if (errno != EINTR) {
                error_ = errno;
            }
        }
        setp(bytes_.data(), bytes_.data() + bytes_.size());
        return error_ == 0 ? 0 : -1;
    }

private:
    void Close() {
        if (descriptor_ >= 0 && close(descriptor_) != 0 && error_ == 0) {
            error_ = errno;
        }
        descriptor_ = -1;
    }

    int descriptor_;
    int error_ = 0;
    std::array<char, 65536> bytes_{};
};

WholeFile::WholeFile(const std::string& path) : path_(Resolved(path)) {
    if (IsFolder(path_)) {
        ThrowSystemError(EISDIR);
    }
    const int descriptor = IsSpecial(path_) ? open(path_.c_str(), O_WRONLY | O_CLOEXEC)
                                            : OpenBeside(path_, temporary_);
    if (descriptor < 0) {
        const int error = errno;
        temporary_.clear();
        ThrowSystemError(error);
    }
    buffer_ = std::make_unique<Buffer>(descriptor);
    stream_.rdbuf(buffer_.get());
}

WholeFile::~WholeFile() {
    if (!temporary_.empty()) {
        unlink(temporary_.c_str());
    }
}

void WholeFile::Commit() {
    const bool is_regular = !temporary_.empty();
    if (const int error = buffer_->Finish(is_regular); error != 0) {
        ThrowSystemError(error);
    }
    if (!is_regular) {
        return;
    }
    if (std::rename(temporary_.c_str(), path_.c_str()) != 0) {
        ThrowSystemError(errno);
    }
    temporary_.clear();
    // The name lasts once its folder does; where folders cannot be flushed, the file is there
    // still.
    const int folder = open(FolderOf(path_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder >= 0) {
        fsync(folder);
        close(folder);
    }
}

std::string WhyNotWritable(const std::string& path) {
    const std::string resolved = Resolved(path);
    if (resolved.empty() || resolved.back() == '/' || IsFolder(resolved)) {
        return Zentar::SystemWords(resolved.empty() ? ENOENT : EISDIR);
    }
    const std::string& needed = IsSpecial(resolved) ? resolved : FolderOf(resolved);
    const int way = IsSpecial(resolved) ? W_OK : W_OK | X_OK;
    return access(needed.c_str(), way) == 0 ? "" : Zentar::SystemWords(errno);
}

}  // namespace outputs
