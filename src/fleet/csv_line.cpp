#include "fleet/csv_line.h"

#include <algorithm>

namespace fleet {

namespace {

constexpr std::string_view kBlanks = " \t";

std::string_view Trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

/// Takes a quoted cell from the beginning of the rest.
std::optional<std::string> TakeQuoted(std::string_view& rest) {
    std::string cell;
    rest.remove_prefix(1);
    for (;;) {
        const std::size_t quote = rest.find('"');
        if (quote == std::string_view::npos) {
            return std::nullopt;
        }
        cell += rest.substr(0, quote);
        rest.remove_prefix(quote + 1);
        if (!rest.starts_with('"')) {
            break;
        }
        cell += '"';
        rest.remove_prefix(1);
    }
    rest.remove_prefix(std::min(rest.find_first_not_of(kBlanks), rest.size()));
    const bool is_whole = rest.empty() || rest.starts_with(',');
    return is_whole ? std::optional(cell) : std::nullopt;
}

}  // namespace

std::optional<std::vector<std::string>> CellsOf(std::string_view line) {
    std::vector<std::string> cells;
    for (std::string_view rest = line;;) {
        rest.remove_prefix(std::min(rest.find_first_not_of(kBlanks), rest.size()));
        if (rest.starts_with('"')) {
            auto cell = TakeQuoted(rest);
            if (!cell) {
                return std::nullopt;
            }
            cells.push_back(std::move(*cell));
        } else {
            const std::size_t end = std::min(rest.find(','), rest.size());
            cells.emplace_back(Trimmed(rest.substr(0, end)));
            rest.remove_prefix(end);
        }
        if (rest.empty()) {
            return cells;
        }
        rest.remove_prefix(1);
    }
}

}  // namespace fleet
