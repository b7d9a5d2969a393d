#include "cli/secret_input.h"

#include <unistd.h>

#include <cerrno>

namespace command {

bool ReadSecret(int descriptor, bool one_line, Zentar::Secret& secret) {
    for (;;) {
        const std::size_t used = secret.text().size();
        if (used == kLongestPassword) {
            errno = E2BIG;
            return false;
        }
        secret.Resize(kLongestPassword);
        const ssize_t count = read(descriptor, secret.data() + used, kLongestPassword - used);
        const int error = errno;
        secret.Resize(used + static_cast<std::size_t>(count > 0 ? count : 0));
        if (count < 0 && error != EINTR) {
            errno = error;
            return false;
        }
        if (count == 0 || (count > 0 && one_line && secret.text().back() == '\n')) {
            return true;
        }
    }
}

void DropLineBreak(Zentar::Secret& secret) {
    for (const char end : {'\n', '\r'}) {
        if (!secret.text().ends_with(end)) {
            return;
        }
        secret.Resize(secret.text().size() - 1);
    }
}

}  // namespace command
