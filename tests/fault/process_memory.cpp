#include "fault/process_memory.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <utility>

namespace fault {

namespace {

/// Sanitizers reserve far more for their own books.
constexpr std::uint64_t kLargestRegion = 1ULL << 30;

/// Memory of its own that does not belong to what is searched, since it is shared.
class Buffer {
public:
    static constexpr std::size_t kBytes = 1 << 20;

    Buffer()
        : bytes_(static_cast<char*>(
              mmap(nullptr, kBytes, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0))) {
        if (bytes_ == MAP_FAILED) {
            throw std::runtime_error("no memory to search memory with");
        }
    }
    ~Buffer() { munmap(bytes_, kBytes); }
    Buffer(const Buffer&) = delete;
    Buffer& operator=(const Buffer&) = delete;

    char* bytes() { return bytes_; }

private:
    char* bytes_;
};

class OpenFile {
public:
    explicit OpenFile(const char* path) : descriptor_(open(path, O_RDONLY | O_CLOEXEC)) {
        if (descriptor_ < 0) {
            throw std::runtime_error(path);
        }
    }
    ~OpenFile() { close(descriptor_); }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    std::size_t Read(char* to, std::size_t count) const {
        const ssize_t got = read(descriptor_, to, count);
        return got > 0 ? static_cast<std::size_t>(got) : 0;
    }
    std::size_t ReadAt(std::uint64_t offset, char* to, std::size_t count) const {
        const ssize_t got = pread(descriptor_, to, count, static_cast<off_t>(offset));
        return got > 0 ? static_cast<std::size_t>(got) : 0;
    }

private:
    int descriptor_;
};

/// The list of this process's regions, with a 0 at its end.
void ReadRegions(Buffer& list) {
    const OpenFile file("/proc/self/maps");
    std::size_t size = 0;
    while (const std::size_t got = file.Read(list.bytes() + size, Buffer::kBytes - 1 - size)) {
        size += got;
    }
    list.bytes()[size] = '\0';
}

class Search {
public:
    explicit Search(const MaskedText& text) : text_(text) {}

    std::vector<std::string> Run() {
        ReadRegions(regions_);
        for (const char* line = regions_.bytes(); *line != '\0';
             line = std::strchr(line, '\n') + 1) {
            SearchRegion(line);
        }
        return std::move(places_);
    }

private:
    void SearchRegion(const char* line) {
        std::uint64_t begin = 0;
        std::uint64_t end = 0;
        char access[5] = "";
        std::sscanf(line, "%" SCNx64 "-%" SCNx64 " %4s", &begin, &end, access);
        if (std::strcmp(access, "rw-p") != 0 || end - begin > kLargestRegion) {
            return;
        }
        const std::uint64_t step = Buffer::kBytes - (text_.size() - 1);
        for (std::uint64_t at = begin; at < end; at += step) {
            const std::uint64_t count = std::min<std::uint64_t>(Buffer::kBytes, end - at);
            const std::size_t got = memory_.ReadAt(at, part_.bytes(), count);
            SearchPart(at, got, line);
        }
    }

    void SearchPart(std::uint64_t address, std::size_t count, const char* line) {
        const char* const begin = part_.bytes();
        const char* const end = begin + count;
        const char* at = begin;
        while (at + text_.size() <= end) {
            at = static_cast<const char*>(
                std::memchr(at, text_[0], static_cast<std::size_t>(end - at)));
            if (at == nullptr || at + text_.size() > end) {
                return;
            }
            if (text_.IsAt(at)) {
                char place[32];
                std::snprintf(place, sizeof place, "%" PRIx64 " in ",
                              address + static_cast<std::uint64_t>(at - begin));
                places_.push_back(place + std::string(line, std::strcspn(line, "\n")));
            }
            ++at;
        }
    }

    const MaskedText& text_;
    const OpenFile memory_{"/proc/self/mem"};
    Buffer regions_;
    Buffer part_;
    std::vector<std::string> places_;
};

}  // namespace

bool MaskedText::IsAt(const char* bytes) const {
    for (std::size_t i = 0; i < size_; ++i) {
        if (static_cast<char>(bytes[i] ^ kMask) != masked_[i]) {
            return false;
        }
    }
    return true;
}

std::vector<std::string> PlacesInMemory(const MaskedText& text) { return Search(text).Run(); }

}  // namespace fault
