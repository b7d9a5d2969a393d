#include "fleet/progress_text.h"

#include <cmath>
#include <iomanip>
#include <sstream>
#include <utility>
#include <vector>

#include "outputs/text/display_text.h"

namespace fleet {

namespace {

std::string Seconds(double seconds) {
    return std::to_string(static_cast<long long>(std::llround(seconds))) + " s";
}

std::vector<std::string> PartsOf(const RunState& state, double elapsed) {
    std::vector<std::string> parts{
        std::to_string(state.done) + " of " + std::to_string(state.hosts) + " hosts",
        std::to_string(state.failed) + " not whole",
        std::to_string(state.under_way) + " under way"};
    if (state.done > 0 && elapsed > 0) {
        const double rate = static_cast<double>(state.done) / elapsed;
        std::ostringstream text;
        text << std::fixed << std::setprecision(1) << rate << "/s";
        parts.push_back(text.str());
        parts.push_back("about " + Seconds(static_cast<double>(state.hosts - state.done) / rate) +
                        " left");
    }
    if (!state.slowest.empty()) {
        constexpr std::size_t kWidestName = 40;
        parts.push_back("slowest " + outputs::DisplayText(state.slowest, kWidestName) + " (" +
                        Seconds(std::chrono::duration<double>(state.slowest_for).count()) + ")");
    }
    return parts;
}

}  // namespace

std::string ProgressText(const RunState& state, std::chrono::milliseconds elapsed,
                         std::size_t columns) {
    std::string text;
    for (const std::string& part : PartsOf(state, std::chrono::duration<double>(elapsed).count())) {
        std::string longer = text;
        longer.append(text.empty() ? "" : ", ").append(part);
        if (outputs::DisplayWidth(longer) > columns) {
            break;
        }
        text = std::move(longer);
    }
    return text;
}

}  // namespace fleet
