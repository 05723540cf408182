#include "screens/app/frmSDB.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/maintenance.h"

namespace ferrolund::screens {

frmSDB::frmSDB(app::AppContext& ctx, std::function<void()> openInEditor, QWidget* parent) : QDialog(parent) {
    setObjectName("frmSDB");
    setWindowTitle("SDBCache Options");
    auto* remove = new QPushButton("Delete SDBCache.bin ", this);
    remove->setObjectName("Command1");
    auto* rename = new QPushButton("Rename SDBCache.bin to SDBCache.bak", this);
    rename->setObjectName("Command2");
    auto* open = new QPushButton("Open SDBCache.bin in Editor", this);
    open->setObjectName("Command3");
    auto* note = new QLabel("Also applies to SDBCache.bin.MD5 RVDBCache.bin RVDBCache.bin.MD5", this);
    note->setObjectName("Label1");
    note->setWordWrap(true);
    connect(remove, &QPushButton::clicked, this, [&ctx] { app::DeleteCacheFiles(ctx); });
    connect(rename, &QPushButton::clicked, this, [&ctx] { app::RenameCacheFiles(ctx); });
    connect(open, &QPushButton::clicked, this, [this, openInEditor] {
        openInEditor();
        accept();
    });
    auto* layout = new QVBoxLayout(this);
    for (QWidget* w : std::initializer_list<QWidget*>{remove, rename, open, note}) layout->addWidget(w);
    resize(360, 170);
}

}  // namespace ferrolund::screens
