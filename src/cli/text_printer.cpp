#include <algorithm>
#include <ostream>
#include <sstream>

#include "cli/display_text.h"
#include "cli/printer.h"
#include "inventory/failure_meanings.h"

namespace command {

namespace {

using inventory::Cell;
using inventory::Column;
using inventory::SectionReading;
using inventory::Shape;
using inventory::Status;
using inventory::Table;

constexpr const char* kColumnGap = "  ";
constexpr const char* kAbsent = "-";  ///< the host has no such property, or an empty one

/// What keeps one long cell from padding all rows to its width. In columns of a terminal.
constexpr std::size_t kWidestColumn = 80;
/// The last one of a row is not padded.
constexpr std::size_t kWidestLastColumn = 400;
/// Of a table of one record.
constexpr std::size_t kWidestValue = 4096;

/// A line of texts that fit for a terminal.
using Line = std::vector<std::string>;

bool IsNumber(const Cell& cell) { return !std::holds_alternative<std::string>(cell); }

std::string ShownCell(const Cell& cell, std::size_t most_columns) {
    if (const auto* text = std::get_if<std::string>(&cell)) {
        return text->empty() ? kAbsent : DisplayText(*text, most_columns);
    }
    return std::visit(
        [](const auto& value) -> std::string {
            if constexpr (std::is_arithmetic_v<std::decay_t<decltype(value)>>) {
                return std::to_string(value);
            } else {
                return value;
            }
        },
        cell);
}

Line ShownRecord(const std::vector<Cell>& row) {
    Line line;
    for (const Cell& cell : row) {
        line.push_back(ShownCell(cell, kWidestValue));
    }
    return line;
}

Line ShownRow(const std::vector<Cell>& row) {
    Line line;
    for (const Cell& cell : row) {
        const bool is_last = line.size() + 1 == row.size();
        line.push_back(ShownCell(cell, is_last ? kWidestLastColumn : kWidestColumn));
    }
    return line;
}

std::string Padding(std::size_t width, const std::string& text) {
    const std::size_t used = DisplayWidth(text);
    return std::string(width > used ? width - used : 0, ' ');
}

std::vector<std::size_t> WidthsOf(const std::vector<Line>& lines) {
    std::vector<std::size_t> widths(lines.front().size(), 0);
    for (const Line& line : lines) {
        for (std::size_t i = 0; i < line.size(); ++i) {
            widths[i] = std::max(widths[i], DisplayWidth(line[i]));
        }
    }
    return widths;
}

const char* WordsOf(Status status) {
    switch (status) {
        case Status::kOk:
            return "";
        case Status::kPartial:
            return "Read in part";
        case Status::kUnavailable:
        case Status::kFailed:
            return "Could not be read";
        case Status::kSkipped:
            return "Not asked for";
    }
    return "";
}

class TextPrinter : public Printer {
public:
    explicit TextPrinter(std::ostream& out) : out_(out) {}

    void Begin(const std::string& host, std::uint16_t port,
               const std::vector<Zentar::Failure>& /*failures*/) override {
        text_ << "Inventory of " << DisplayText(host) << ", port " << port << '\n';
    }

    void Print(const SectionReading& reading) override {
        for (const Table& table : reading.content.tables) {
            WriteTitle(table);
            WriteStatus(table);
            WriteRows(table);
        }
        was_asked_ = was_asked_ || reading.status != Status::kSkipped;
        if (was_asked_) {
            out_ << text_.str() << std::flush;
            text_.str({});
        }
    }

    void End() override { out_.flush(); }

private:
    void WriteTitle(const Table& table) {
        std::string title = table.head.title;
        if (table.head.shape == Shape::kList && !table.rows.empty()) {
            title += " (" + std::to_string(table.rows.size()) + ")";
        }
        text_ << '\n' << title << '\n' << std::string(DisplayWidth(title), '=') << '\n';
    }

    void WriteStatus(const Table& table) {
        const char* const words = WordsOf(table.status);
        if (*words != '\0') {
            text_ << words;
            if (table.cause) {
                text_ << ": " << inventory::MeaningOf(*table.cause).meaning;
            }
            text_ << ".\n";
        }
    }

    void WriteRows(const Table& table) {
        if (table.head.shape == Shape::kOneRecord) {
            WriteRecord(table);
        } else if (!table.rows.empty()) {
            WriteList(table);
        } else if (table.status == Status::kOk) {
            text_ << "The host has none.\n";
        }
    }

    void WriteRecord(const Table& table) {
        std::vector<Line> headings;
        for (const Column& column : table.columns) {
            headings.push_back({column.heading});
        }
        const std::size_t width = WidthsOf(headings).front();
        const Line values = ShownRecord(table.rows.front());
        const bool nothing_read = std::ranges::count(values, kAbsent) == std::ssize(values);
        for (std::size_t i = 0; i < values.size() && !(table.status != Status::kOk && nothing_read);
             ++i) {
            const std::string heading = table.columns[i].heading;
            text_ << heading << Padding(width, heading) << kColumnGap << values[i] << '\n';
        }
    }

    void WriteList(const Table& table) {
        std::vector<Line> lines(2);
        for (const Column& column : table.columns) {
            lines[0].emplace_back(column.heading);
        }
        std::ranges::transform(table.rows, std::back_inserter(lines), ShownRow);
        lines[1].resize(lines[0].size());
        const std::vector<std::size_t> widths = WidthsOf(lines);
        std::ranges::transform(widths, lines[1].begin(),
                               [](std::size_t width) { return std::string(width, '-'); });
        for (const Line& line : lines) {
            WriteLine(line, widths, table.rows.front());
        }
    }

    /// `sample` shows which columns are numbers: these stand right.
    void WriteLine(const Line& line, const std::vector<std::size_t>& widths,
                   const std::vector<Cell>& sample) {
        for (std::size_t i = 0; i < line.size(); ++i) {
            const std::string padding = Padding(widths[i], line[i]);
            const bool is_last = i + 1 == line.size();
            const bool is_number = IsNumber(sample[i]);
            text_ << (i == 0 ? "" : kColumnGap) << (is_number ? padding : "") << line[i]
                  << (is_number || is_last ? "" : padding);
        }
        text_ << '\n';
    }

    std::ostream& out_;
    std::ostringstream text_;  ///< not written yet
    bool was_asked_ = false;
};

}  // namespace

std::unique_ptr<Printer> MakeTextPrinter(std::ostream& out) {
    return std::make_unique<TextPrinter>(out);
}

}  // namespace command
