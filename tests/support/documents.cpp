#include "support/documents.h"

#include <stdexcept>

namespace support {

inventory::SectionResult Section(const schema::RecordKind& kind,
                                 const std::vector<RecordText>& records, inventory::Status status) {
    inventory::SectionResult section{kind.MakeRecords()};
    section.status = status;
    for (const RecordText& record : records) {
        if (kind.shape == schema::Shape::kList) {
            section.records->Append();
        }
        for (const auto& [name, text] : record) {
            const std::size_t field = PlaceOf(kind, name);
            section.records->Set(section.records->size() - 1, field,
                                 CellOf(kind.fields()[field].type, text));
        }
    }
    return section;
}

inventory::Document EmptyDocument() {
    using namespace std::chrono;
    inventory::Document document;
    document.host = "esx01";
    document.port = 5989;
    document.transport = "https";
    document.started_at = sys_days(year(2026) / November / 22) + hours(5) + seconds(15);
    document.duration = milliseconds(1500);
    return document;
}

}  // namespace support
