#include "outputs/csv/csv_cell.h"

#include <algorithm>

#include "common/text/utf8.h"

namespace outputs {

namespace {

constexpr char kQuote = '"';

bool IsNegativeInteger(std::string_view text) {
    return text.size() > 1 && text.front() == '-' &&
           std::all_of(text.begin() + 1, text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool IsFormula(std::string_view text) {
    constexpr std::string_view kFormulaStarts = "=+-@\t\r";
    return !text.empty() && kFormulaStarts.find(text.front()) != std::string_view::npos &&
           !IsNegativeInteger(text);
}

std::string WithDoubledQuotes(std::string text) {
    for (std::size_t at = 0; (at = text.find(kQuote, at)) != std::string::npos; at += 2) {
        text.insert(at, 1, kQuote);
    }
    return text;
}

}  // namespace

void AppendCsvCell(std::string& csv, std::string_view text) {
    const bool needs_quotes = text.find_first_of(",\"\r\n") != std::string_view::npos;
    csv.append(needs_quotes ? 1 : 0, kQuote);
    csv.append(IsFormula(text) ? "'" : "");
    csv.append(WithDoubledQuotes(Zentar::RepairedUtf8(text)));
    csv.append(needs_quotes ? 1 : 0, kQuote);
}

}  // namespace outputs
