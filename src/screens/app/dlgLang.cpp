#include "screens/app/dlgLang.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "screens/app/qt_text.h"

namespace ferrolund::screens {

dlgLang::dlgLang(app::AppContext& ctx, QWidget* parent) : QDialog(parent) {
    setObjectName("dlgLang");
    setWindowTitle("Select Language");
    list_ = new QListWidget(this);
    list_->setObjectName("File1");
    const QDir folder(DiskPathToQt(ctx.appPath("Language")));
    for (const QString& file : folder.entryList({"*.txt"}, QDir::Files, QDir::Name)) {
        auto* row = new QListWidgetItem(file, list_);
        if (SystemPathFromQt(file) == ctx.languageFile) list_->setCurrentItem(row);
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName("OKButton");
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        if (auto* row = list_->currentItem()) chosen_ = FromQt(row->text());
        accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(list_, &QListWidget::itemDoubleClicked, buttons, &QDialogButtonBox::accepted);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(list_);
    layout->addWidget(buttons);
    resize(320, 260);
}

}  // namespace ferrolund::screens
