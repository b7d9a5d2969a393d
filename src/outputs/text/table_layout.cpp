#include "outputs/text/table_layout.h"

#include <algorithm>

namespace outputs {

namespace {

using Floor = std::size_t (*)(const ColumnLayout& column);

std::size_t WholeCells(const ColumnLayout& column) {
    return std::max(column.heading_word, column.cells);
}

std::size_t LeastWidth(const ColumnLayout& column) {
    return std::max(column.heading_word, std::min(column.cells, column.least_cells));
}

std::size_t LeastUnlessIdentifying(const ColumnLayout& column) {
    return column.identifies ? WholeCells(column) : LeastWidth(column);
}

/// How narrow each step may make a column.
constexpr Floor kSteps[] = {WholeCells, LeastUnlessIdentifying, LeastWidth};

std::size_t RowWidth(const std::vector<ColumnLayout>& columns) {
    std::size_t width = kColumnGap * (columns.size() - 1);
    for (const ColumnLayout& column : columns) {
        width += column.width;
    }
    return width;
}

/// Null when none is wider than its floor.
ColumnLayout* WidestAbove(Floor floor, std::vector<ColumnLayout>& columns) {
    ColumnLayout* widest = nullptr;
    for (ColumnLayout& column : columns) {
        if (column.width > floor(column) && (widest == nullptr || column.width > widest->width)) {
            widest = &column;
        }
    }
    return widest;
}

}  // namespace

bool FitColumns(std::vector<ColumnLayout>& columns, std::size_t available) {
    for (ColumnLayout& column : columns) {
        column.width = std::max(column.heading, column.cells);
    }
    std::size_t width = RowWidth(columns);
    for (const Floor floor : kSteps) {
        while (width > available) {
            ColumnLayout* const widest = WidestAbove(floor, columns);
            if (widest == nullptr) {
                break;
            }
            --widest->width;
            --width;
        }
    }
    return width <= available;
}

}  // namespace outputs
