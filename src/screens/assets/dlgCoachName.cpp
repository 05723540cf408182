#include "screens/assets/dlgCoachName.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QVBoxLayout>

#include "app/app_context.h"
#include "screens/app/qt_text.h"

namespace ferrolund::screens {

namespace {
constexpr const char* kModule = "dlgCoachName";

struct Choice {
    const char* suffix;
    const char* caption;
};
const Choice kChoices[] = {{"_MT", "Passengers and driver"},
                           {"_DO", "Driver Only (EMU/DMU)"},
                           {"_PO", "Passengers Only (EMU/DMU)"},
                           {"_ND", "No Driver"},
                           {"_DF", "Driver Front"},
                           {"_DR", "Driver Rear"},
                           {"_DEAD", "Dead"}};
}  // namespace

dlgCoachName::dlgCoachName(app::AppContext& ctx, const std::string& base, const std::string& internalName,
                           const std::string& suffix, QWidget* parent)
    : QDialog(parent), ctx_(ctx), base_(base), name_0_(internalName) {
    setObjectName("dlgCoachName");
    setWindowTitle(ToQt(ctx_.langText(538, "Save Rolling-Stock Item", kModule)));
    file_ = new QLineEdit(this);
    file_->setObjectName("Text1");
    name_ = new QLineEdit(this);
    name_->setObjectName("Text2");
    auto* form = new QFormLayout;
    form->addRow(ToQt(ctx_.langText(539, "Item will be saved as:- ", kModule)), file_);
    form->addRow(ToQt(ctx_.langText(540, "File Internal Name as:-", kModule)), name_);
    auto* group = new QGroupBox(ToQt(ctx_.langText(541, "Is this item now:-", kModule)), this);
    auto* groupLayout = new QVBoxLayout(group);
    for (const Choice& c : kChoices) {
        auto* option = new QRadioButton(c.caption, group);
        option->setObjectName(QString("opt") + (c.suffix + 1));
        connect(option, &QRadioButton::toggled, this, [this, s = std::string(c.suffix)](bool on) {
            if (on) choose(s);
        });
        groupLayout->addWidget(option);
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &dlgCoachName::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(group);
    layout->addWidget(buttons);
    if (auto* first = findChild<QRadioButton*>(QString("opt") + QString::fromStdString(suffix).mid(1)))
        first->setChecked(true);
    else
        choose(suffix);
    resize(460, height());
}

void dlgCoachName::choose(const std::string& suffix) {
    suffix_ = suffix;
    file_->setText(ToQt(base_ + suffix));
    name_->setText(ToQt(name_0_ + suffix));
}

std::string dlgCoachName::fileName() const { return FromQt(file_->text().trimmed()); }
std::string dlgCoachName::internalName() const { return FromQt(name_->text().trimmed()); }

bool BoxesComplete(app::AppContext& ctx, bool complete) {
    if (!complete && ctx.ui)
        ctx.ui->message(ctx.langText(546, "You have failed to complete one of the boxes?", kModule), base::Icon::Exclamation);
    return complete;
}

void dlgCoachName::accept() {
    if (BoxesComplete(ctx_, !fileName().empty() && !internalName().empty())) QDialog::accept();
}

}  // namespace ferrolund::screens
