#include "screens/assets/frmBlue.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "screens/app/qt_text.h"

namespace ferrolund::screens {

frmBlue::frmBlue(app::AppContext& ctx, assets::DesignerForm form, const std::string& folder, QWidget* parent)
    : QDialog(parent), ctx_(ctx), form_(form), folder_(folder) {
    setObjectName("frmBlue");
    setWindowTitle(ToQt(std::string(assets::kDesignerCaption)));
    const assets::DesignerLayout layout = assets::LayoutOf(form);

    auto* group = new QGroupBox(ToQt(layout.title), this);
    group->setObjectName("fraForm");
    auto* fields = new QFormLayout(group);
    for (const assets::DesignerBox& box : layout.boxes) {
        auto* edit = new QLineEdit(group);
        edit->setObjectName(QString::fromStdString("txt" + box.marker));
        fields->addRow(ToQt(box.caption), edit);
        boxes_.push_back(edit);
    }
    name_ = new QLineEdit(this);
    name_->setObjectName("txtName");
    make_ = new QPushButton("&Make Blueprint", this);
    make_->setObjectName("cmdMake");
    make_->setAutoDefault(false);
    connect(make_, &QPushButton::clicked, this, &frmBlue::makeBlueprint);

    auto* main = new QVBoxLayout(this);
    main->addWidget(group);
    auto* nameRow = new QFormLayout;
    nameRow->addRow("Blueprint Name", name_);
    auto* folderLabel = new QLabel(ToQt(folder_), this);
    folderLabel->setObjectName("lblFolder");
    nameRow->addRow("Folder", folderLabel);
    main->addLayout(nameRow);
    auto* commands = new QHBoxLayout;
    commands->addStretch();
    commands->addWidget(make_);
    main->addLayout(commands);
    resize(480, sizeHint().height());
}

void frmBlue::makeBlueprint() {
    std::vector<std::string> texts;
    for (QLineEdit* box : boxes_) texts.push_back(FromQt(box->text()));
    if (const auto file = assets::MakeBlueprint(ctx_, form_, folder_, FromQt(name_->text()), texts)) written_ = *file;
}

frmBlue* ShowBlue(app::AppContext& ctx, QWidget* parent, assets::DesignerForm form, const std::string& folder) {
    auto* screen = new frmBlue(ctx, form, folder, parent);
    screen->setAttribute(Qt::WA_DeleteOnClose);
    screen->show();
    return screen;
}

}  // namespace ferrolund::screens
