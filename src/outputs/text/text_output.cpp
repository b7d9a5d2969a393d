#include "outputs/text/text_output.h"

#include <algorithm>

#include "inventory/failure_meanings.h"
#include "outputs/text/document_lines.h"
#include "outputs/text/records_text.h"
#include "outputs/text/text_writer.h"

namespace outputs {

namespace {

using inventory::Document;
using inventory::SectionResult;
using inventory::Status;
using schema::Shape;

/// What a section's status is to people.
struct StatusWords {
    const char* words;
    Weight weight;
};

StatusWords WordsOf(Status status) {
    switch (status) {
        case Status::kOk:
            return {"", Weight::kNormal};
        case Status::kPartial:
            return {"Read in part", Weight::kBold};
        case Status::kUnavailable:
            return {"Could not be read", Weight::kNormal};
        case Status::kFailed:
            return {"Could not be read", Weight::kBold};
        case Status::kSkipped:
            return {"Not asked for", Weight::kDim};
    }
    return {"", Weight::kNormal};
}

bool WasNotAsked(const Document& document) {
    return !document.sections.empty() &&
           std::ranges::all_of(document.sections, [](const SectionResult& section) {
               return section.status == Status::kSkipped;
           });
}

void WriteTitle(const SectionResult& section, TextWriter& text) {
    std::string title = section.kind().title;
    if (section.kind().shape == Shape::kList && section.records->size() > 0) {
        title += " (" + std::to_string(section.records->size()) + ")";
    }
    text.Line("");
    text.Line(title, Weight::kBold);
    text.Line(std::string(title.size(), '='), Weight::kDim);
}

void WriteStatus(const SectionResult& section, TextWriter& text) {
    const auto [words, weight] = WordsOf(section.status);
    if (*words != '\0') {
        const std::string why =
            section.cause ? std::string(": ") + inventory::MeaningOf(*section.cause).meaning : "";
        text.Paragraph(words + why + ".", weight);
    }
}

bool HasValue(const schema::Records& records) {
    for (std::size_t i = 0; i < records.kind().fields().size(); ++i) {
        if (!IsNull(records.At(0, i))) {
            return true;
        }
    }
    return false;
}

void WriteRecords(const SectionResult& section, TextWriter& text) {
    const schema::Records& records = *section.records;
    if (section.kind().shape == Shape::kOneRecord) {
        if (section.status == Status::kOk || HasValue(records)) {
            WriteCard(records, text);
        }
    } else if (records.size() > 0) {
        WriteTable(records, text);
    } else if (section.status == Status::kOk) {
        text.Line("The host has none.");
    }
}

}  // namespace

void WriteText(const Document& document, const TextStyle& style, std::ostream& out) {
    if (WasNotAsked(document)) {
        return;
    }
    TextWriter text(style, out);
    text.Paragraph(HostLine(document), Weight::kBold);
    for (const SectionResult& section : document.sections) {
        WriteTitle(section, text);
        WriteStatus(section, text);
        WriteRecords(section, text);
    }
    text.Line("");
    text.Paragraph(ReadingLine(document),
                   document.status == Status::kOk ? Weight::kDim : Weight::kBold);
    text.Flush();
}

}  // namespace outputs
