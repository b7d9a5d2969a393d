#include "outputs/csv/csv_output.h"

#include <ostream>

#include "outputs/csv/csv_cell.h"

namespace outputs {

namespace {

using inventory::Document;
using inventory::SectionResult;

constexpr const char* kHostColumn = "host";

/// A line as it grows.
class CsvLine {
public:
    explicit CsvLine(std::string_view first) { AppendCsvCell(text_, first); }

    void Add(std::string_view cell) {
        text_ += ',';
        AppendCsvCell(text_, cell);
    }
    std::string Ended() { return text_ + "\r\n"; }

private:
    std::string text_;
};

/// The text of each kind of value.
struct CsvText {
    std::string operator()(std::monostate /*null*/) const { return {}; }
    std::string operator()(std::string_view text) const { return std::string(text); }
    std::string operator()(std::int64_t number) const { return std::to_string(number); }
    std::string operator()(bool value) const { return value ? "true" : "false"; }
    std::string operator()(const schema::DateTime& time) const { return schema::Iso8601Of(time); }

    template <class Element>
    std::string operator()(const std::vector<Element>& elements) const {
        std::string text;
        for (const Element& element : elements) {
            text += (text.empty() ? "" : " ") + (*this)(element);
        }
        return text;
    }
};

/// A single record always exists, but without a value when it could not be read.
bool IsThere(const SectionResult& section, std::size_t place) {
    const std::size_t count = section.kind().fields().size();
    bool is_there = section.WasRead() || section.kind().shape == schema::Shape::kList;
    for (std::size_t i = 0; i < count; ++i) {
        is_there = is_there || !IsNull(section.records->At(place, i));
    }
    return is_there;
}

std::string CodeText(std::int32_t code) { return code == 0 ? "" : std::to_string(code); }

}  // namespace

std::string CsvHeader(const schema::RecordKind& kind) {
    CsvLine line(kHostColumn);
    for (const schema::Field& field : kind.fields()) {
        line.Add(field.name);
    }
    return line.Ended();
}

void AppendCsv(const Document& document, const schema::RecordKind& kind, std::ostream& out) {
    const SectionResult* const section = document.Find(kind);
    const std::size_t records = section == nullptr ? 0 : section->records->size();
    for (std::size_t place = 0; place < records; ++place) {
        if (!IsThere(*section, place)) {
            continue;
        }
        CsvLine line(document.host);
        for (std::size_t i = 0; i < kind.fields().size(); ++i) {
            line.Add(std::visit(CsvText{}, section->records->At(place, i)));
        }
        out << line.Ended();
    }
}

std::string CsvFailuresHeader() {
    CsvLine line(kHostColumn);
    for (const char* name : {"section", "kind", "code", "class", "message"}) {
        line.Add(name);
    }
    return line.Ended();
}

void AppendCsvFailures(const Document& document, std::ostream& out) {
    for (const inventory::DocumentFailure& failure : document.failures) {
        CsvLine line(document.host);
        line.Add(failure.section);
        line.Add(WordOf(failure.kind));
        line.Add(CodeText(failure.code));
        line.Add(failure.class_name);
        line.Add(failure.message);
        out << line.Ended();
    }
}

}  // namespace outputs
