#include "client/host_words.h"

#include "common/text/beginning.h"

namespace cimclient {

namespace {

using Zentar::Beginning;

constexpr std::string_view kEllipsis = "\u2026";

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
