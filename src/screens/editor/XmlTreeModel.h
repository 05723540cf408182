#pragma once
// The XML tree as a Qt model: rows are made only as the view asks for them, so a tree of
// hundreds of thousands of elements opens at once. An entry's text is its element's
// name; a search's marks show bold; renaming goes through the editor's rule.

#include <QAbstractItemModel>
#include <functional>
#include <vector>

#include "app/app_context.h"
#include "editor/xml_tree.h"

namespace ferrolund::screens {

class XmlTreeModel : public QAbstractItemModel {
    Q_OBJECT
public:
    XmlTreeModel(app::AppContext& ctx, editor::XmlTreeEditor& editor, QObject* parent = nullptr);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    QModelIndex indexOf(editor::NodeId node) const;
    static editor::NodeId nodeOf(const QModelIndex& index);
    // Runs `change`, which reads the tree anew, as a reset of the model.
    void reset(const std::function<void()>& change);
    // The entries whose marks changed are painted again.
    void nodesChanged(const std::vector<editor::NodeId>& nodes);

signals:
    void renamed();

private:
    app::AppContext& ctx_;
    editor::XmlTreeEditor& editor_;
};

}  // namespace ferrolund::screens
