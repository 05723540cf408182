#include "screens/editor/XmlTreeModel.h"

#include <QFont>

#include "screens/app/qt_text.h"

namespace ferrolund::screens {

using editor::kNoNode;
using editor::NodeId;

XmlTreeModel::XmlTreeModel(app::AppContext& ctx, editor::XmlTreeEditor& editor, QObject* parent)
    : QAbstractItemModel(parent), ctx_(ctx), editor_(editor) {}

NodeId XmlTreeModel::nodeOf(const QModelIndex& index) {
    return index.isValid() ? static_cast<NodeId>(index.internalId()) : kNoNode;
}

QModelIndex XmlTreeModel::indexOf(NodeId node) const {
    if (node >= editor_.tree.count()) return {};
    return createIndex(static_cast<int>(editor_.tree.row(node)), 0, static_cast<quintptr>(node));
}

QModelIndex XmlTreeModel::index(int row, int column, const QModelIndex& parent) const {
    if (column != 0 || row < 0) return {};
    const NodeId child = editor_.tree.child(nodeOf(parent), static_cast<std::size_t>(row));
    return child == kNoNode ? QModelIndex() : createIndex(row, 0, static_cast<quintptr>(child));
}

QModelIndex XmlTreeModel::parent(const QModelIndex& child) const {
    return indexOf(editor_.tree.parent(nodeOf(child)));
}

int XmlTreeModel::rowCount(const QModelIndex& parent) const {
    if (parent.column() > 0) return 0;
    return static_cast<int>(editor_.tree.childCount(nodeOf(parent)));
}

int XmlTreeModel::columnCount(const QModelIndex&) const { return 1; }

QVariant XmlTreeModel::data(const QModelIndex& index, int role) const {
    const NodeId node = nodeOf(index);
    if (node == kNoNode) return {};
    switch (role) {
        case Qt::DisplayRole:
        case Qt::EditRole:
            return ToQt(editor_.tree.name(node));
        case Qt::FontRole:
            if (editor_.bold.count(node)) {
                QFont font;
                font.setBold(true);
                return font;
            }
            return {};
        default:
            return {};
    }
}

bool XmlTreeModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    const NodeId node = nodeOf(index);
    if (role != Qt::EditRole || node == kNoNode) return false;
    const std::string name = FromQt(value.toString());
    if (name == editor_.tree.name(node)) return false;
    if (!editor_.rename(ctx_, node, name)) return false;
    emit dataChanged(index, index, {Qt::DisplayRole, Qt::EditRole});
    emit renamed();
    return true;
}

Qt::ItemFlags XmlTreeModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable;
}

void XmlTreeModel::reset(const std::function<void()>& change) {
    beginResetModel();
    change();
    endResetModel();
}

void XmlTreeModel::nodesChanged(const std::vector<NodeId>& nodes) {
    for (const NodeId node : nodes) {
        const QModelIndex index = indexOf(node);
        if (index.isValid()) emit dataChanged(index, index, {Qt::FontRole});
    }
}

}  // namespace ferrolund::screens
