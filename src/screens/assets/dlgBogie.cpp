#include "screens/assets/dlgBogie.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

#include "assets/wagon_sounds.h"
#include "screens/app/qt_text.h"

namespace ferrolund::screens {

dlgBogie::dlgBogie(QWidget* parent) : QDialog(parent) {
    setObjectName("dlgBogie");
    setWindowTitle("Bogie Audio Control Name");
    auto* layout = new QVBoxLayout(this);
    auto* text = new QLabel("Change BogieAudioControlName to  'Kuju\\RailSimulator\\Audio\\RailNetwork\\Bogies\\........'", this);
    text->setObjectName("lblBogie");
    layout->addWidget(text);
    for (std::string_view word : assets::kBogieChoices) {
        auto* option = new QRadioButton(ToQt(std::string(word)), this);
        option->setObjectName(ToQt("opt" + std::string(word)));
        layout->addWidget(option);
    }
    option(std::string(assets::kBogieChoices[0]))->setChecked(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
}

QRadioButton* dlgBogie::option(const std::string& word) const {
    return findChild<QRadioButton*>(ToQt("opt" + word));
}

std::string dlgBogie::choice() const {
    for (std::string_view word : assets::kBogieChoices) {
        if (QRadioButton* o = option(std::string(word)); o && o->isChecked()) return std::string(word);
    }
    return {};
}

}  // namespace ferrolund::screens
