#include "cli/suggestion.h"

#include <algorithm>
#include <numeric>

namespace command {

std::size_t EditDistance(const std::string& a, const std::string& b) {
    // Rows of the table of all beginnings: the one before the last, the last, and the next.
    std::vector<std::size_t> before(b.size() + 1);
    std::vector<std::size_t> last(b.size() + 1);
    std::vector<std::size_t> next(b.size() + 1);
    std::iota(last.begin(), last.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        next[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            next[j] = std::min({replaced, last[j] + 1, next[j - 1] + 1});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                next[j] = std::min(next[j], before[j - 2] + 1);
            }
        }
        before.swap(last);
        last.swap(next);
    }
    return last[b.size()];
}

std::string DidYouMean(const std::string& word, const std::vector<std::string>& known) {
    constexpr std::size_t kLongestWord = 64;  // nobody types more by mistake
    if (word.size() > kLongestWord || known.empty()) {
        return {};
    }
    const auto distance = [&word](const std::string& other) { return EditDistance(word, other); };
    const std::string& nearest = *std::ranges::min_element(known, {}, distance);
    const std::size_t tolerated = std::max<std::size_t>(1, nearest.size() / 3);
    const bool is_near = distance(nearest) <= std::min(tolerated, nearest.size() - 1);
    return is_near ? " (did you mean " + nearest + "?)" : "";
}

}  // namespace command
