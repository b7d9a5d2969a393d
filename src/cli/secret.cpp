#include "cli/secret.h"

#include <string.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "common/platform/wipe.h"

namespace command {

void Wipe(char* bytes, std::size_t count) { explicit_bzero(bytes, count); }

Secret::Secret() { text_.reserve(kCapacity); }

Secret::Secret(std::string_view text) : Secret() { text_ = text; }

Secret::~Secret() { Zentar::Wipe(text_); }

Secret::Secret(Secret&& other) noexcept : text_(std::move(other.text_)) { other.text_.clear(); }

Secret& Secret::operator=(Secret&& other) noexcept {
    Zentar::Wipe(text_);
    std::swap(text_, other.text_);
    return *this;
}

bool Secret::ReadFrom(int descriptor, bool one_line) {
    for (;;) {
        const std::size_t used = text_.size();
        if (used == kCapacity) {
            errno = E2BIG;
            return false;
        }
        text_.resize(kCapacity);
        const ssize_t count = read(descriptor, text_.data() + used, kCapacity - used);
        const int error = errno;
        text_.resize(used + static_cast<std::size_t>(count > 0 ? count : 0));
        if (count < 0 && error != EINTR) {
            errno = error;
            return false;
        }
        if (count == 0 || (count > 0 && one_line && text_.back() == '\n')) {
            return true;
        }
    }
}

void Secret::DropLineBreak() {
    if (text_.ends_with('\n')) {
        text_.pop_back();
        if (text_.ends_with('\r')) {
            text_.pop_back();
        }
    }
}

}  // namespace command
