#include "fleet/host_table.h"

#include <algorithm>
#include <iomanip>
#include <ostream>
#include <sstream>

#include "outputs/text/display_text.h"
#include "schema/host_kinds.h"

namespace fleet {

using inventory::Document;

namespace {

/// A column of the table.
struct TableColumn {
    const char* heading;
    std::size_t least;
    std::size_t most;
    bool is_number;
};

constexpr TableColumn kTableColumns[] = {
    {"Host", 12, 40, false},  {"Product", 8, 32, false}, {"Hypervisor", 8, 32, false},
    {"Packages", 8, 8, true}, {"Events", 6, 6, true},    {"Status", 7, 7, false},
    {"Seconds", 7, 7, true},
};
constexpr std::size_t kCount = std::size(kTableColumns);
constexpr std::size_t kGap = 2;

std::string TextAt(const Document& document, const schema::RecordKind& kind, const char* field) {
    const inventory::SectionResult* const section = document.Find(kind);
    if (section == nullptr) {
        return {};
    }
    return TextOf(section->records->At(0, PlaceOf(kind, field)));
}

std::string CountOf(const Document& document, const schema::RecordKind& kind) {
    const inventory::SectionResult* const section = document.Find(kind);
    return section == nullptr || !section->WasRead() ? "-"
                                                     : std::to_string(section->records->size());
}

std::string SecondsOf(const Document& document) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(1)
         << std::chrono::duration<double>(document.duration).count();
    return text.str();
}

std::vector<std::string> RowCells(const HostEntry& entry, const Document& document) {
    return {entry.Name(),
            TextAt(document, schema::kSystem, "product_name"),
            TextAt(document, schema::kOs, "version"),
            CountOf(document, schema::kPackages),
            CountOf(document, schema::kEvents),
            inventory::WordOf(document.status),
            SecondsOf(document)};
}

std::string RowOf(const std::vector<std::string>& cells, const std::vector<std::size_t>& widths) {
    std::string row;
    for (std::size_t i = 0; i < kCount; ++i) {
        const std::string shown =
            cells[i].empty() ? "-" : outputs::DisplayText(cells[i], widths[i]);
        const std::size_t used = outputs::DisplayWidth(shown);
        const std::string padding(widths[i] > used ? widths[i] - used : 0, ' ');
        row += std::string(i == 0 ? 0 : kGap, ' ');
        row += kTableColumns[i].is_number ? padding + shown : shown + padding;
    }
    return row.substr(0, row.find_last_not_of(' ') + 1);
}

std::size_t WidthOf(const std::vector<std::size_t>& widths) {
    std::size_t width = kGap * (kCount - 1);
    for (const std::size_t column : widths) {
        width += column;
    }
    return width;
}

}  // namespace

HostTable::HostTable(const std::vector<HostEntry>& hosts, std::size_t columns, std::ostream& out,
                     std::function<void(const std::function<void()>&)> around)
    : out_(out), around_(std::move(around)) {
    for (const TableColumn& column : kTableColumns) {
        widths_.push_back(column.most);
    }
    std::size_t longest = kTableColumns[0].least;
    for (const HostEntry& host : hosts) {
        longest = std::max(longest, outputs::DisplayWidth(outputs::DisplayText(host.Name())));
    }
    widths_[0] = std::min(longest, kTableColumns[0].most);
    // The widest gives first, down to the least of each.
    while (WidthOf(widths_) > columns) {
        std::size_t widest = kCount;
        for (std::size_t i = 0; i < kCount; ++i) {
            const bool may_give = widths_[i] > kTableColumns[i].least;
            if (may_give && (widest == kCount || widths_[i] > widths_[widest])) {
                widest = i;
            }
        }
        if (widest == kCount) {
            return;
        }
        --widths_[widest];
    }
}

void HostTable::WriteHeadings() {
    std::vector<std::string> headings;
    for (const TableColumn& column : kTableColumns) {
        headings.emplace_back(column.heading);
    }
    around_([&] { out_ << RowOf(headings, widths_) << std::endl; });
}

void HostTable::Take(const HostEntry& entry, const Document& document) {
    const std::string row = RowOf(RowCells(entry, document), widths_);
    around_([&] { out_ << row << std::endl; });
}

}  // namespace fleet
