#pragma once
// The Qt table model over the entries of frmNewAP's open archive: a row an entry, in the
// archive's order, so that a row's number is the entry's index.

#include <QAbstractTableModel>

#include "archives/ap_viewer.h"

namespace ferrolund::screens {

class ApEntriesModel : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit ApEntriesModel(const archives::ApViewer& viewer, QObject* parent = nullptr)
        : QAbstractTableModel(parent), viewer_(viewer) {}
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    // Tells the views that another archive (or none) is open.
    void refresh();

private:
    const archives::ApViewer& viewer_;
};

}  // namespace ferrolund::screens
