#pragma once
// The Qt table model over the report grid's rows; missing items are shown in cyan.

#include <QAbstractTableModel>

#include "archives/report_grid.h"

namespace ferrolund::screens {

class ReportGridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit ReportGridModel(archives::ReportGrid& grid, QObject* parent = nullptr)
        : QAbstractTableModel(parent), grid_(grid) {}
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    // Tells the views that the grid changed as a whole.
    void refresh();

private:
    archives::ReportGrid& grid_;
};

}  // namespace ferrolund::screens
