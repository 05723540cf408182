#include "screens/consists/dlgConGen.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QVBoxLayout>

#include "consists/consist_rows.h"
#include "screens/app/qt_text.h"

namespace ferrolund::screens {

dlgConGen::dlgConGen(QWidget* parent) : QDialog(parent) {
    setObjectName("dlgConGen");
    setWindowTitle("Generate Consist");
    wagons_ = new QLineEdit(this);
    wagons_->setObjectName("Text1");
    randomness_ = new QLineEdit(this);
    randomness_->setObjectName("Text2");
    auto* form = new QFormLayout;
    form->addRow("Number of Wagons in Consist", wagons_);
    form->addRow("Randomness 0 - 10", randomness_);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(buttons);
}

long dlgConGen::wagons() const { return consists::WholeNumber(FromQt(wagons_->text())); }
long dlgConGen::randomness() const { return consists::WholeNumber(FromQt(randomness_->text())); }

}  // namespace ferrolund::screens
