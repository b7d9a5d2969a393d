#include "outputs/schema_reference/schema_text.h"

#include <algorithm>
#include <ostream>

#include "inventory/sections.h"
#include "outputs/schema_reference/field_words.h"

namespace outputs {

namespace {

using schema::Field;
using schema::RecordKind;

constexpr std::size_t kGap = 2;

/// The text, filled up to where the next column begins.
std::string InColumn(const std::string& text, std::size_t width) {
    return text + std::string(width + kGap - text.size(), ' ');
}

void WriteFields(const RecordKind& kind, std::ostream& out) {
    std::size_t name_width = 0;
    std::size_t type_width = 0;
    for (const Field& field : kind.fields()) {
        name_width = std::max(name_width, std::string(field.name).size());
        type_width = std::max(type_width, TypeWords(field).size());
    }
    for (const Field& field : kind.fields()) {
        const std::string traits = TraitWords(field);
        out << "  " << InColumn(field.name, name_width) << InColumn(TypeWords(field), type_width)
            << field.meaning << (traits.empty() ? "" : " [" + traits + "]") << '\n';
    }
}

}  // namespace

void WriteSchemaText(std::ostream& out) {
    const char* between = "";
    for (const inventory::Section& section : inventory::AllSections()) {
        for (const RecordKind* kind : section.kinds) {
            out << between << kind->name << ": " << kind->title;
            if (std::string(kind->name) != section.name) {
                out << ", read with " << section.name;
            }
            out << "\n  " << kind->name_space << ", " << kind->class_name << "\n\n";
            WriteFields(*kind, out);
            between = "\n";
        }
    }
    out << "\nidentity: finds the same record in another reading. varies: may differ in each "
           "reading.\n";
}

}  // namespace outputs
