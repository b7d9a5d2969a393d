#include "outputs/text/records_text.h"

#include <algorithm>
#include <cstdint>
#include <numeric>

#include "outputs/text/cell_text.h"
#include "outputs/text/display_text.h"
#include "outputs/text/table_layout.h"

namespace outputs {

namespace {

using schema::Field;
using schema::Records;
using schema::Type;

constexpr std::string_view kAbsent = "-";  ///< the host has no such property, or an empty one

/// What keeps one long cell from padding all rows to its width, on any terminal.
constexpr std::size_t kWidestColumn = 80;
/// The last one of a row is not padded.
constexpr std::size_t kWidestLastColumn = 400;
constexpr std::size_t kMostLinesOfHeading = 8;
constexpr std::size_t kMostLinesOfCell = 6;
constexpr std::size_t kMostLinesOfValue = 40;  ///< of a card

/// Cells of a table are not made narrower. Numbers and dates are never cut.
constexpr std::size_t kLeastText = 12;
constexpr std::size_t kLeastIdentifying = 16;
constexpr std::size_t kLeastValue = std::string_view("2026-03-12 08:15:30.000000 +01:00").size();

using Places = std::vector<std::size_t>;  ///< of fields

bool IsText(const Field& field) {
    return field.type == Type::kText || field.type == Type::kTextList ||
           field.type == Type::kIntegerList;
}

std::size_t LeastCells(const Field& field) {
    if (!IsText(field)) {
        return kLeastValue;
    }
    return field.identifies ? kLeastIdentifying : kLeastText;
}

std::size_t LongestWord(std::string_view text) {
    std::size_t longest = 0;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(' '), text.size());
        longest = std::max(longest, DisplayWidth(text.substr(0, end)));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return longest;
}

/// The columns that the widest value of each field needs, counted up to the greatest width; 0 where
/// no record has a value.
std::vector<std::size_t> WidestCells(const Records& records) {
    std::vector<std::size_t> widest(records.kind().fields().size());
    CellText cell_text;
    for (std::size_t i = 0; i < records.size(); ++i) {
        for (std::size_t f = 0; f < widest.size(); ++f) {
            if (widest[f] < kWidestLastColumn) {
                const schema::Cell cell = records.At(i, f);
                const std::string_view text = cell_text.Of(cell);
                // A value that needs no column is one.
                const std::size_t width = std::max<std::size_t>(
                    text.empty() ? 0 : 1, DisplayColumns(text, kWidestLastColumn));
                widest[f] = std::max(widest[f], width);
            }
        }
    }
    return widest;
}

/// Those fields that have a value; the first one where none has.
Places FieldsWithValues(const std::vector<std::size_t>& widest) {
    Places places;
    for (std::size_t f = 0; f < widest.size(); ++f) {
        if (widest[f] > 0) {
            places.push_back(f);
        }
    }
    return places.empty() ? Places{0} : places;
}

class Cards {
public:
    Cards(const Records& records, Places places, TextWriter& text)
        : records_(records), places_(std::move(places)), text_(text) {
        for (const std::size_t place : places_) {
            heading_width_ = std::max(heading_width_, DisplayWidth(Heading(place)));
        }
    }

    void Write(std::size_t record) {
        for (const std::size_t place : places_) {
            const schema::Cell cell = records_.At(record, place);
            const std::string_view value = cell_text_.Of(cell);
            WriteValue(Heading(place), value.empty() ? kAbsent : value);
        }
    }

private:
    std::string_view Heading(std::size_t place) const {
        return records_.kind().fields()[place].heading;
    }

    void WriteValue(std::string_view heading, std::string_view value) {
        const std::size_t before = heading_width_ + kColumnGap;
        line_.clear();
        text_.AppendStyled(line_, heading, Weight::kDim);
        line_.append(before - DisplayWidth(heading), ' ');
        for (const std::string& shown :
             DisplayLines(value, text_.columns() - before, kMostLinesOfValue)) {
            text_.Line(line_ + shown);
            line_.assign(before, ' ');
        }
    }

    const Records& records_;
    const Places places_;
    TextWriter& text_;
    std::size_t heading_width_ = 0;
    CellText cell_text_;
    std::string line_;
};

class TableText {
public:
    TableText(const Records& records, Places places, const std::vector<std::size_t>& widest,
              TextWriter& text)
        : records_(records), places_(std::move(places)), text_(text) {
        for (std::size_t c = 0; c < places_.size(); ++c) {
            const Field& field = FieldAt(places_[c]);
            const bool is_padded = c + 1 < places_.size() || !MayGoOn(c);
            const std::size_t most = is_padded ? kWidestColumn : kWidestLastColumn;
            columns_.push_back({DisplayWidth(field.heading), LongestWord(field.heading),
                                std::clamp<std::size_t>(widest[places_[c]], 1, most),
                                LeastCells(field), field.identifies});
        }
    }

    bool Fits() { return FitColumns(columns_, text_.columns()); }

    void WriteHeadings() {
        std::vector<std::vector<std::string>> headings;
        std::size_t height = 0;
        for (std::size_t c = 0; c < columns_.size(); ++c) {
            headings.push_back(
                DisplayLines(FieldAt(places_[c]).heading, columns_[c].width, kMostLinesOfHeading));
            height = std::max(height, headings.back().size());
        }
        for (std::size_t row = 0; row < height; ++row) {
            line_.clear();
            for (std::size_t c = 0; c < columns_.size(); ++c) {
                // They stand on the rule.
                const std::size_t blank = height - headings[c].size();
                AppendCell(c, row < blank ? "" : headings[c][row - blank]);
            }
            text_.Line(line_, Weight::kBold);
        }
        line_.clear();
        for (std::size_t c = 0; c < columns_.size(); ++c) {
            AppendCell(c, std::string(columns_[c].width, '-'));
        }
        text_.Line(line_, Weight::kDim);
    }

    void WriteRow(std::size_t record) {
        line_.clear();
        further_.clear();
        for (std::size_t c = 0; c < columns_.size(); ++c) {
            const schema::Cell cell = records_.At(record, places_[c]);
            const std::string_view value = cell_text_.Of(cell);
            if (GoesOn(c, value)) {
                BeginLines(c, DisplayLines(value, columns_[c].width, kMostLinesOfCell));
            } else {
                AppendCell(c, value.empty() ? kAbsent : value);
            }
        }
        text_.Line(line_);
        WriteFurtherLines();
    }

private:
    const Field& FieldAt(std::size_t place) const { return records_.kind().fields()[place]; }

    /// Below the first column a text would begin a line, and could pass for another record.
    bool MayGoOn(std::size_t c) const { return c > 0 && IsText(FieldAt(places_[c])); }

    bool GoesOn(std::size_t c, std::string_view value) const {
        const std::size_t width = columns_[c].width;
        return columns_[c].cells > width && MayGoOn(c) && DisplayColumns(value, width + 1) > width;
    }

    /// Numbers stand right.
    void AppendCell(std::size_t c, std::string_view value) {
        const std::size_t width = columns_[c].width;
        if (c > 0) {
            line_.append(kColumnGap, ' ');
        }
        if (FieldAt(places_[c]).type == Type::kInteger) {
            line_.append(width - DisplayColumns(value, width), ' ');
            AppendDisplayText(line_, value, width);
        } else {
            line_.append(width - AppendDisplayText(line_, value, width), ' ');
        }
    }

    /// A cell that goes on over the next lines of the row.
    void BeginLines(std::size_t c, std::vector<std::string> lines) {
        line_.append(kColumnGap, ' ');
        line_ += lines.front();
        line_.append(columns_[c].width - DisplayWidth(lines.front()), ' ');
        further_.push_back({c, std::move(lines)});
    }

    void WriteFurtherLines() {
        bool is_over = further_.empty();
        for (std::size_t n = 1; !is_over; ++n) {
            std::size_t width = 0;
            line_.clear();
            for (const auto& [c, lines] : further_) {
                if (n < lines.size()) {
                    line_.append(StartOf(c) - width, ' ');
                    line_ += lines[n];
                    width = StartOf(c) + DisplayWidth(lines[n]);
                }
            }
            is_over = line_.empty();
            if (!is_over) {
                text_.Line(line_);
            }
        }
    }

    /// The columns before it in a row.
    std::size_t StartOf(std::size_t c) const {
        return std::accumulate(
            columns_.begin(), columns_.begin() + static_cast<std::ptrdiff_t>(c), kColumnGap * c,
            [](std::size_t sum, const ColumnLayout& column) { return sum + column.width; });
    }

    struct CellLines {
        std::size_t column;
        std::vector<std::string> lines;
    };

    const Records& records_;
    const Places places_;
    TextWriter& text_;
    std::vector<ColumnLayout> columns_;
    std::vector<CellLines> further_;  ///< of the row that is being written
    CellText cell_text_;
    std::string line_;
};

}  // namespace

void WriteCard(const Records& records, TextWriter& text) {
    Places all(records.kind().fields().size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    Cards(records, std::move(all), text).Write(0);
}

void WriteTable(const Records& records, TextWriter& text) {
    const std::vector<std::size_t> widest = WidestCells(records);
    const Places places = FieldsWithValues(widest);
    TableText table(records, places, widest, text);
    if (table.Fits()) {
        table.WriteHeadings();
        for (std::size_t i = 0; i < records.size(); ++i) {
            table.WriteRow(i);
        }
        return;
    }
    Cards cards(records, places, text);
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (i > 0) {
            text.Line("");
        }
        cards.Write(i);
    }
}

}  // namespace outputs
