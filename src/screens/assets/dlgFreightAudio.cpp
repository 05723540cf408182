#include "screens/assets/dlgFreightAudio.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QVBoxLayout>

namespace ferrolund::screens {

dlgFreightAudio::dlgFreightAudio(QWidget* parent) : QDialog(parent) {
    setObjectName("dlgFreightAudio");
    setWindowTitle("Freight Wagon Sounds");
    bogie_ = new QCheckBox("If BogieAudioControlName is blank do you want it added", this);
    bogie_->setObjectName("chkBogie");
    sound_ = new QCheckBox("If there is no 'Wagon Sound' entry do you want it added", this);
    sound_->setObjectName("chkSound");
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(bogie_);
    layout->addWidget(sound_);
    layout->addWidget(buttons);
}

assets::FreightAudioChoice dlgFreightAudio::choice() const {
    return {bogie_->isChecked(), sound_->isChecked()};
}

}  // namespace ferrolund::screens
