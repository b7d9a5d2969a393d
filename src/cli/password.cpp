#include "cli/password.h"

#include <cstdlib>
#include <cstring>
#include <utility>

#include "cli/command_error.h"
#include "cli/password_file.h"
#include "cli/secret_input.h"
#include "cli/terminal.h"
#include "outputs/text/display_text.h"

namespace command {

using outputs::DisplayText;

namespace {

constexpr const char* kVariable = "KALVEX_PASSWORD";

/// The process list of some systems shows the environment too, so the value is overwritten there.
Zentar::Secret TakeFromEnvironment(char* value) {
    if (std::strlen(value) > kLongestPassword) {
        throw UsageError(std::string(kVariable) + " is too long for a password; shorten it");
    }
    Zentar::Secret password{std::string_view(value)};
    Zentar::Wipe(value, std::strlen(value));
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
        known_ = ReadPasswordFile(options.password_file, "--password-file");
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

Zentar::Secret PasswordSource::Take() {
    return prompt_.empty() ? std::move(known_) : AskOnTerminal(prompt_);
}

}  // namespace command
