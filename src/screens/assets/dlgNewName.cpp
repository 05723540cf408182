#include "screens/assets/dlgNewName.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QVBoxLayout>

#include "app/app_context.h"
#include "assets/clone_reskin.h"
#include "screens/app/qt_text.h"

namespace ferrolund::screens {

namespace {
constexpr const char* kModule = "dlgNewName";
}  // namespace

dlgNewName::dlgNewName(app::AppContext& ctx, const assets::CloneNames& offered, bool withCategory, QWidget* parent)
    : QDialog(parent), ctx_(ctx) {
    setObjectName(withCategory ? "dlgNewName22" : "dlgNewName");
    setWindowTitle("Clone Object with this new name");
    file_ = new QLineEdit(ToQt(offered.fileName), this);
    file_->setObjectName("txtFileName");
    name_ = new QLineEdit(ToQt(offered.internalName), this);
    name_->setObjectName("txtInternalName");
    folder_ = new QLineEdit(ToQt(offered.folder), this);
    folder_->setObjectName("txtFolder");
    auto* form = new QFormLayout;
    form->addRow("File Name:", file_);
    form->addRow("Internal Name:", name_);
    form->addRow("Folder Name", folder_);
    if (withCategory) {
        category_ = new QComboBox(this);
        category_->setObjectName("cboCategory");
        for (std::string_view c : assets::kReskinCategories) category_->addItem(ToQt(std::string(c)));
        form->addRow("Category", category_);
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &dlgNewName::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(buttons);
    // The person extends each box: the cursor stands behind its end mark.
    file_->setFocus();
    file_->end(false);
    resize(520, sizeHint().height());
}

assets::CloneNames dlgNewName::names() const {
    assets::CloneNames out;
    out.fileName = FromQt(file_->text().trimmed());
    out.internalName = FromQt(name_->text().trimmed());
    out.folder = FromQt(folder_->text().trimmed());
    if (category_) out.category = FromQt(category_->currentText());
    return out;
}

void dlgNewName::accept() {
    const assets::CloneNames typed = names();
    if (typed.fileName.empty() || typed.internalName.empty() || typed.folder.empty()) {
        if (ctx_.ui)
            ctx_.ui->message(ctx_.langText(546, "You have failed to complete one of the boxes?", kModule),
                             base::Icon::Exclamation);
        return;
    }
    QDialog::accept();
}

std::optional<assets::CloneNames> dlgNewName::Ask(app::AppContext& ctx, const assets::CloneNames& offered,
                                                  bool withCategory, QWidget* parent) {
    dlgNewName dialog(ctx, offered, withCategory, parent);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.names();
}

}  // namespace ferrolund::screens
