#include "cli/password_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cerrno>

#include "cli/command_error.h"
#include "cli/secret_input.h"
#include "common/platform/system_words.h"

namespace command {

namespace {

[[noreturn]] void FailToRead(const std::string& file, const std::string& option,
                             const std::string& problem) {
    const std::string shown = file == "-" ? "from standard input" : "file " + file;
    throw UsageError("cannot read the password " + shown + ": " + problem + "; give " + option +
                     " a file that holds the password alone");
}

void CheckPassword(const std::string& file, const std::string& option,
                   const Zentar::Secret& password) {
    if (password.text().empty()) {
        FailToRead(file, option, "it is empty");
    }
    if (password.text().find('\0') != std::string::npos) {
        FailToRead(file, option, "it holds a NUL byte");
    }
}

}  // namespace

Zentar::Secret ReadPasswordFile(const std::string& file, const std::string& option) {
    const bool is_stdin = file == "-";
    const int descriptor = is_stdin ? STDIN_FILENO : open(file.c_str(), O_RDONLY | O_CLOEXEC);
    Zentar::Secret password;
    const bool was_read = descriptor >= 0 && ReadSecret(descriptor, false, password);
    const int error = errno;
    if (descriptor >= 0 && !is_stdin) {
        close(descriptor);
    }
    if (!was_read) {
        FailToRead(file, option, error == E2BIG ? "it is too long" : Zentar::SystemWords(error));
    }
    DropLineBreak(password);
    CheckPassword(file, option, password);
    return password;
}

void RefusePasswordArgument(CLI::App& app, const std::string& option, const std::string& remedy) {
    app.add_option_function<std::string>(
           option,
           [remedy](const std::string&) {
               throw UsageError("a password is never an argument, where others can see it; " +
                                remedy);
           })
        ->expected(0, 1)
        ->group("");
}

}  // namespace command
