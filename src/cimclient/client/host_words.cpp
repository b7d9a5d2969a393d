#include "client/host_words.h"

namespace cimclient {

namespace {

constexpr std::string_view kEllipsis = "\u2026";

/// At most so many bytes, without half a character at the end.
std::string_view Beginning(std::string_view text, std::size_t most) {
    if (text.size() <= most) {
        return text;
    }
    const auto is_continuation = [&](std::size_t at) {
        return (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U;
    };
    while (most > 0 && is_continuation(most)) {
        --most;
    }
    return text.substr(0, most);
}

}  // namespace

std::string FitForLogs(std::string_view text, const Credentials& credentials) {
    // Twice: the first cut bounds the work, but must not hide a half of the credentials.
    const std::size_t longest_secret = credentials.AuthorizationValue().size();
    std::string fit(Beginning(text, kMaxMessageBytes + longest_secret));
    credentials.RemoveFrom(fit);
    if (fit.size() > kMaxMessageBytes || text.size() > kMaxMessageBytes + longest_secret) {
        fit = std::string(Beginning(fit, kMaxMessageBytes - kEllipsis.size()));
        fit += kEllipsis;
    }
    return fit;
}

}  // namespace cimclient
