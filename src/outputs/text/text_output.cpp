#include "outputs/text/text_output.h"

#include <algorithm>
#include <ostream>
#include <vector>

#include "inventory/failure_meanings.h"
#include "outputs/text/display_text.h"

namespace outputs {

namespace {

using inventory::SectionResult;
using inventory::Status;
using schema::Cell;
using schema::Field;
using schema::Shape;

constexpr const char* kColumnGap = "  ";
constexpr const char* kAbsent = "-";  ///< the host has no such property, or an empty one

/// What keeps one long cell from padding all rows to its width. In columns of a terminal.
constexpr std::size_t kWidestColumn = 80;
/// The last one of a row is not padded.
constexpr std::size_t kWidestLastColumn = 400;
/// Of a card.
constexpr std::size_t kWidestValue = 4096;

/// A line of texts that fit for a terminal.
using Line = std::vector<std::string>;

/// The text of each kind of value.
struct CellText {
    std::string operator()(std::monostate /*null*/) const { return {}; }
    std::string operator()(std::string_view text) const { return std::string(text); }
    std::string operator()(std::int64_t number) const { return std::to_string(number); }
    std::string operator()(bool value) const { return value ? "yes" : "no"; }
    std::string operator()(const schema::DateTime& time) const {
        return schema::ReadableTextOf(time);
    }

    std::string operator()(const schema::TextList& elements) const {
        std::string text;
        for (const std::string_view element : elements) {
            text.append(text.empty() ? "" : ", ").append(element);
        }
        return text;
    }

    std::string operator()(const schema::IntegerList& numbers) const {
        std::string text;
        for (const std::int64_t number : numbers) {
            text.append(text.empty() ? "" : ", ").append(std::to_string(number));
        }
        return text;
    }
};

std::string ShownCell(const Cell& cell, std::size_t most_columns) {
    const std::string text = std::visit(CellText{}, cell);
    return text.empty() ? kAbsent : DisplayText(text, most_columns);
}

std::string Padding(std::size_t width, const std::string& text) {
    const std::size_t used = DisplayWidth(text);
    return std::string(width > used ? width - used : 0, ' ');
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

class TextOutput {
public:
    TextOutput(const TextStyle& style, std::ostream& out) : style_(style), text_(out) {}

    void Write(const inventory::Document& document) {
        if (WasNotAsked(document)) {
            return;
        }
        text_ << "Inventory of " << DisplayText(document.host) << ", port " << document.port
              << '\n';
        for (const SectionResult& section : document.sections) {
            WriteTitle(section);
            WriteStatus(section);
            WriteRecords(section);
        }
        text_.flush();
    }

private:
    static bool WasNotAsked(const inventory::Document& document) {
        return !document.sections.empty() &&
               std::ranges::all_of(document.sections, [](const SectionResult& section) {
                   return section.status == Status::kSkipped;
               });
    }

    void WriteTitle(const SectionResult& section) {
        std::string title = section.kind().title;
        if (section.kind().shape == Shape::kList && section.records->size() > 0) {
            title += " (" + std::to_string(section.records->size()) + ")";
        }
        text_ << '\n' << title << '\n' << std::string(DisplayWidth(title), '=') << '\n';
    }

    void WriteStatus(const SectionResult& section) {
        const char* const words = WordsOf(section.status);
        if (*words != '\0') {
            text_ << words;
            if (section.cause) {
                text_ << ": " << inventory::MeaningOf(*section.cause).meaning;
            }
            text_ << ".\n";
        }
    }

    void WriteRecords(const SectionResult& section) {
        if (section.kind().shape == Shape::kOneRecord) {
            WriteCard(section);
        } else if (section.records->size() > 0) {
            WriteList(*section.records);
        } else if (section.status == Status::kOk) {
            text_ << "The host has none.\n";
        }
    }

    void WriteCard(const SectionResult& section) {
        const auto fields = section.kind().fields();
        std::size_t width = 0;
        bool has_content = section.status == Status::kOk;
        for (std::size_t i = 0; i < fields.size(); ++i) {
            width = std::max(width, DisplayWidth(fields[i].heading));
            has_content = has_content || !IsNull(section.records->At(0, i));
        }
        for (std::size_t i = 0; has_content && i < fields.size(); ++i) {
            const std::string heading = fields[i].heading;
            text_ << heading << Padding(width, heading) << kColumnGap
                  << ShownCell(section.records->At(0, i), kWidestValue) << '\n';
        }
    }

    static Line ShownRow(const schema::Records& records, std::size_t place) {
        const std::size_t count = records.kind().fields().size();
        Line line;
        for (std::size_t i = 0; i < count; ++i) {
            line.push_back(ShownCell(records.At(place, i),
                                     i + 1 == count ? kWidestLastColumn : kWidestColumn));
        }
        return line;
    }

    void WriteList(const schema::Records& records) {
        Line headings;
        std::vector<std::size_t> widths;
        for (const Field& field : records.kind().fields()) {
            headings.emplace_back(field.heading);
            widths.push_back(DisplayWidth(field.heading));
        }
        for (std::size_t i = 0; i < records.size(); ++i) {
            const Line line = ShownRow(records, i);
            for (std::size_t c = 0; c < line.size(); ++c) {
                widths[c] = std::max(widths[c], DisplayWidth(line[c]));
            }
        }
        Line rules;
        for (const std::size_t width : widths) {
            rules.emplace_back(width, '-');
        }
        WriteLine(records, headings, widths);
        WriteLine(records, rules, widths);
        for (std::size_t i = 0; i < records.size(); ++i) {
            WriteLine(records, ShownRow(records, i), widths);
        }
    }

    /// Numbers stand right.
    void WriteLine(const schema::Records& records, const Line& line,
                   const std::vector<std::size_t>& widths) {
        for (std::size_t i = 0; i < line.size(); ++i) {
            const std::string padding = Padding(widths[i], line[i]);
            const bool is_last = i + 1 == line.size();
            const bool is_number = records.kind().fields()[i].type == schema::Type::kInteger;
            text_ << (i == 0 ? "" : kColumnGap) << (is_number ? padding : "") << line[i]
                  << (is_number || is_last ? "" : padding);
        }
        text_ << '\n';
    }

    const TextStyle style_;
    std::ostream& text_;
};

}  // namespace

void WriteText(const inventory::Document& document, const TextStyle& style, std::ostream& out) {
    TextOutput(style, out).Write(document);
}

}  // namespace outputs
