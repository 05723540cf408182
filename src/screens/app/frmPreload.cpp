#include "screens/app/frmPreload.h"

#include <QDialogButtonBox>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

#include "screens/app/qt_text.h"

namespace ferrolund::screens {

frmPreload::frmPreload(const app::AppContext& ctx, QWidget* parent) : QDialog(parent) {
    setObjectName("frmPreload");
    setWindowTitle("Select your PreLoad folder");
    model_ = new QFileSystemModel(this);
    model_->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot);
    model_->setRootPath(QDir::rootPath());
    tree_ = new QTreeView(this);
    tree_->setObjectName("Dir1");
    tree_->setModel(model_);
    for (int column = 1; column < model_->columnCount(); ++column) tree_->hideColumn(column);
    tree_->header()->hide();
    text_ = new QLineEdit(this);
    text_->setObjectName("Text1");

    const QString start = ctx.prefs.preLoadFolder.empty() ? DiskPathToQt(ctx.gameRoot())
                                                          : DiskPathToQt(ctx.prefs.preLoadFolder);
    if (!start.isEmpty()) {
        const QModelIndex index = model_->index(start);
        tree_->setCurrentIndex(index);
        tree_->scrollTo(index);
        text_->setText(start);
    }
    connect(tree_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current) { text_->setText(model_->filePath(current)); });

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName("OKButton");
    buttons->button(QDialogButtonBox::Cancel)->setObjectName("CancelButton");
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tree_);
    layout->addWidget(text_);
    layout->addWidget(buttons);
    resize(480, 420);
}

std::string frmPreload::folder() const { return SystemPathFromQt(text_->text()); }

}  // namespace ferrolund::screens
