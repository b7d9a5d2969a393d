#include "cli/password.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "cli/command_error.h"
#include "cli/display_text.h"
#include "cli/terminal.h"

namespace command {

namespace {

constexpr const char* kVariable = "KALVEX_PASSWORD";

[[noreturn]] void FailToRead(const std::string& file, const char* problem) {
    const std::string shown = file == "-" ? "from standard input" : "file " + file;
    throw UsageError("cannot read the password " + shown + ": " + problem +
                     "; give --password-file a file that holds the password alone");
}

void CheckPassword(const std::string& file, const Secret& password) {
    if (password.text().find('\0') != std::string::npos) {
        FailToRead(file, "it holds a NUL byte");
    }
}

Secret ReadPasswordFile(const std::string& file) {
    const bool is_stdin = file == "-";
    const int descriptor = is_stdin ? STDIN_FILENO : open(file.c_str(), O_RDONLY | O_CLOEXEC);
    Secret password;
    const bool was_read = descriptor >= 0 && password.ReadFrom(descriptor, false);
    const int error = errno;
    if (descriptor >= 0 && !is_stdin) {
        close(descriptor);
    }
    if (!was_read) {
        FailToRead(file, error == E2BIG ? "it is too long" : std::strerror(error));
    }
    password.DropLineBreak();
    CheckPassword(file, password);
    return password;
}

/// The process list of some systems shows the environment too, so the value is overwritten there.
Secret TakeFromEnvironment(char* value) {
    if (std::strlen(value) > Secret::kCapacity) {
        throw UsageError(std::string(kVariable) + " is too long for a password; shorten it");
    }
    Secret password{std::string_view(value)};
    Wipe(value, std::strlen(value));
    unsetenv(kVariable);
    return password;
}

std::string PromptFor(const HostOptions& options) {
    const std::string account = options.user.empty() ? "" : options.user + "@";
    return "Password for " + DisplayText(account + options.host) + ": ";
}

}  // namespace

PasswordSource::PasswordSource(const HostOptions& options) {
    char* const variable = std::getenv(kVariable);
    if (!options.password_file.empty()) {
        known_ = ReadPasswordFile(options.password_file);
    } else if (variable != nullptr) {
        known_ = TakeFromEnvironment(variable);
    } else if (HasTerminal()) {
        prompt_ = PromptFor(options);
    } else if (!options.user.empty()) {
        throw UsageError(
            "no password for --user, and no terminal to ask on; use --password-file FILE or set "
            "KALVEX_PASSWORD");
    }
}

Secret PasswordSource::Take() {
    return prompt_.empty() ? std::move(known_) : AskOnTerminal(prompt_);
}

}  // namespace command
