#include "screens/assets/dlgMass.h"

#include <QDialogButtonBox>
#include <QDoubleValidator>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QVBoxLayout>

#include "app/app_context.h"
#include "screens/app/qt_text.h"
#include "screens/assets/dlgCoachName.h"

namespace ferrolund::screens {

dlgMass::dlgMass(app::AppContext& ctx, QWidget* parent) : QDialog(parent), ctx_(ctx) {
    setObjectName("dlgMass");
    setWindowTitle("Change Mass/Capacity");
    auto* explanation = new QLabel(
        "This option is only for changing the Mass and Capacity settings of selected freight cars. The same values "
        "will be applied to ALL selected cars.",
        this);
    explanation->setObjectName("lblExplain");
    explanation->setWordWrap(true);
    // The blueprint holds numbers with a point, whatever the desktop's language.
    auto* numbers = new QDoubleValidator(0, 1e6, 4, this);
    numbers->setLocale(QLocale::c());
    numbers->setNotation(QDoubleValidator::StandardNotation);
    mass_ = new QLineEdit(this);
    mass_->setObjectName("txtMass");
    mass_->setValidator(numbers);
    capacity_ = new QLineEdit(this);
    capacity_->setObjectName("txtCapacity");
    capacity_->setValidator(numbers);
    auto* form = new QFormLayout;
    form->addRow("New Mass", mass_);
    form->addRow("New Capacity", capacity_);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &dlgMass::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(explanation);
    layout->addLayout(form);
    layout->addWidget(buttons);
    // The explanation wraps: the layout gives the dialog the height the wrapped text needs.
    layout->setSizeConstraint(QLayout::SetMinimumSize);
    setMinimumWidth(420);
    adjustSize();
}

std::string dlgMass::mass() const { return FromQt(mass_->text().trimmed()); }
std::string dlgMass::capacity() const { return FromQt(capacity_->text().trimmed()); }

void dlgMass::accept() {
    if (BoxesComplete(ctx_, mass_->hasAcceptableInput() && capacity_->hasAcceptableInput())) QDialog::accept();
}

}  // namespace ferrolund::screens
