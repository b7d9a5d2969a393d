#include "cli/trust_options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cctype>

#include "cli/command_error.h"

namespace command {

namespace {

/// An empty variable in a script must not stand for trust in every host.
std::string ProblemOfCaFile(const std::string& name) {
    return name.empty() ? "the name of the file is empty; give one, or leave out --ca-file" : "";
}

bool LooksLikeFingerprint(std::string text) {
    constexpr std::size_t kDigits = 64;
    std::erase(text, ':');
    return text.size() == kDigits &&
           std::ranges::all_of(text, [](unsigned char digit) { return std::isxdigit(digit) != 0; });
}

}  // namespace

void AddTrustOptions(CLI::App& app, TrustOptions& trust) {
    app.add_option("--ca-file", trust.ca_file,
                   "File of CA certificates (PEM): the host's certificate must come from one of "
                   "them and name the host")
        ->check(CLI::Validator(ProblemOfCaFile, ""))
        ->type_name("FILE");
    app.add_option("--fingerprint", trust.fingerprints,
                   "SHA-256 fingerprint that the host's certificate must have, as kalvex "
                   "fingerprint prints it; may be given several times")
        ->type_name("SHA256")
        ->allow_extra_args(false);
}

void CheckTrustOptions(const TrustOptions& trust, bool has_tls) {
    if (!has_tls && (!trust.ca_file.empty() || !trust.fingerprints.empty())) {
        throw UsageError(
            "--ca-file and --fingerprint test the host's certificate, which there is none of with "
            "--transport http; leave them out, or use https");
    }
    if (!std::ranges::all_of(trust.fingerprints, LooksLikeFingerprint)) {
        throw UsageError(
            "--fingerprint takes a certificate's SHA-256 fingerprint, 32 bytes in hexadecimal "
            "digits; kalvex fingerprint prints it");
    }
}

}  // namespace command
