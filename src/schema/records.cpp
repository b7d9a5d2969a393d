#include "schema/records.h"

#include <algorithm>

namespace schema {

std::size_t PlaceOf(const RecordKind& kind, std::string_view field_name) {
    const auto fields = kind.fields();
    const auto found = std::ranges::find_if(
        fields, [field_name](const Field& field) { return field.name == field_name; });
    return static_cast<std::size_t>(found - fields.begin());
}

}  // namespace schema
