#include "outputs/schema_reference/field_words.h"

namespace outputs {

std::string TypeWords(const schema::Field& field) {
    const std::string unit = field.unit;
    return WordOf(field.type) + (unit.empty() ? "" : " (" + unit + ")");
}

std::string SourceWords(const schema::Field& field) {
    const std::string class_name = field.class_name;
    return field.property + (class_name.empty() ? "" : " of " + class_name);
}

std::string TraitWords(const schema::Field& field) {
    const std::string identity = field.identifies ? "identity" : "";
    const std::string varies = field.varies ? "varies" : "";
    return identity + (identity.empty() || varies.empty() ? "" : ", ") + varies;
}

}  // namespace outputs
