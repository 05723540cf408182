#include "screens/archives/ap_entries_model.h"

#include <array>

#include "screens/app/qt_text.h"

namespace ferrolund::screens {

namespace {
constexpr std::array<const char*, 6> kHeadings = {"Name", "Path", "Size", "Packed Size", "Date", "Compression"};
}

int ApEntriesModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(viewer_.archive().entries().size());
}

int ApEntriesModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(kHeadings.size());
}

QVariant ApEntriesModel::data(const QModelIndex& index, int role) const {
    const auto& entries = viewer_.archive().entries();
    if (!index.isValid() || index.row() >= static_cast<int>(entries.size())) return {};
    const archives::ArchiveEntry& e = entries[static_cast<std::size_t>(index.row())];
    if (role == Qt::TextAlignmentRole && (index.column() == 2 || index.column() == 3)) {
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    }
    if (role != Qt::DisplayRole) return {};
    switch (index.column()) {
        case 0: return ToQt(e.name);
        case 1: return ToQt(e.path);
        case 2: return QString::number(e.size);
        case 3: return QString::number(e.compressedSize);
        case 4: return ToQt(archives::FormatEntryTime(e.modified));
        case 5: return ToQt(archives::CompressionName(e.method));
        default: return {};
    }
}

QVariant ApEntriesModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal) return {};
    if (section < 0 || section >= static_cast<int>(kHeadings.size())) return {};
    return QString(kHeadings[static_cast<std::size_t>(section)]);
}

void ApEntriesModel::refresh() {
    beginResetModel();
    endResetModel();
}

}  // namespace ferrolund::screens
