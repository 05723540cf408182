#include "screens/archives/report_grid_model.h"

#include <QBrush>
#include <QColor>

#include "screens/app/qt_text.h"

namespace ferrolund::screens {

int ReportGridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(grid_.rowCount());
}

int ReportGridModel::columnCount(const QModelIndex& parent) const {
    if (parent.isValid()) return 0;
    std::size_t columns = std::max<std::size_t>(1, grid_.table.headings.size());
    for (const auto& row : grid_.table.rows) columns = std::max(columns, row.size());
    return static_cast<int>(columns);
}

QVariant ReportGridModel::data(const QModelIndex& index, int role) const {
    const auto row = static_cast<std::size_t>(index.row());
    if (role == Qt::DisplayRole) return ToQt(grid_.cell(row, static_cast<std::size_t>(index.column())));
    if (role == Qt::BackgroundRole && row < grid_.missing.size() && grid_.missing[row]) {
        return QBrush(QColor(0, 255, 255));
    }
    return {};
}

QVariant ReportGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole) return {};
    if (orientation == Qt::Vertical) return section + 1;
    const auto column = static_cast<std::size_t>(section);
    if (column < grid_.table.headings.size()) return ToQt(grid_.table.headings[column]);
    if (column == 0) return ToQt(grid_.heading);
    return {};
}

void ReportGridModel::refresh() {
    beginResetModel();
    endResetModel();
}

}  // namespace ferrolund::screens
