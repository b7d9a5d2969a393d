#include "outputs/schema_reference/schema_markdown.h"

#include <ostream>
#include <string>

#include "inventory/sections.h"
#include "outputs/schema_reference/field_words.h"

namespace outputs {

namespace {

constexpr const char* kHead =
    "# Fields\n\n"
    "<!-- kalvex schema --format markdown -->\n\n"
    "All outputs give these fields under these names. A value that the host did not give is "
    "`null` in JSON,\nempty in CSV and `-` in text; a value that does not fit its type is given "
    "as the text that it is.\n*Identity* fields find the same record in another reading. A field "
    "that *varies* may differ in each\nreading, though nothing happened to the host.\n";

constexpr const char* kTableHead =
    "| field | type | CIM property | notes | meaning |\n"
    "|---|---|---|---|---|\n";

const char* WordOf(schema::Shape shape) {
    return shape == schema::Shape::kOneRecord ? "one record" : "a list of records";
}

/// A bar would end the table's cell.
std::string InTable(const std::string& text) {
    std::string shown;
    for (const char character : text) {
        shown += character == '|' ? "\\|" : std::string(1, character);
    }
    return shown;
}

void WriteKind(const inventory::Section& section, const schema::RecordKind& kind,
               std::ostream& out) {
    out << "\n## " << kind.title << ": `" << kind.name << "`\n\n"
        << "Class `" << kind.class_name << "` of the namespace `" << kind.name_space << "`; "
        << WordOf(kind.shape);
    if (std::string(kind.name) != section.name) {
        out << ", read with the section `" << section.name << '`';
    }
    out << ".\n\n" << kTableHead;
    for (const schema::Field& field : kind.fields()) {
        out << "| `" << field.name << "` | " << InTable(TypeWords(field)) << " | "
            << InTable(SourceWords(field)) << " | " << TraitWords(field) << " | "
            << InTable(field.meaning) << " |\n";
    }
}

}  // namespace

void WriteSchemaMarkdown(std::ostream& out) {
    out << kHead;
    for (const inventory::Section& section : inventory::AllSections()) {
        for (const schema::RecordKind* kind : section.kinds) {
            WriteKind(section, *kind, out);
        }
    }
}

}  // namespace outputs
