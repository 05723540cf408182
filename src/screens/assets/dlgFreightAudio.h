#pragma once
// dlgFreightAudio, "Freight Wagon Sounds": what the wagon sound commands may add to a
// wagon that lacks it, asked once before they run.

#include <QDialog>

#include "assets/wagon_sounds.h"

class QCheckBox;

namespace ferrolund::screens {

class dlgFreightAudio : public QDialog {
    Q_OBJECT
public:
    explicit dlgFreightAudio(QWidget* parent = nullptr);
    assets::FreightAudioChoice choice() const;
    QCheckBox* bogieBox() const { return bogie_; }
    QCheckBox* soundBox() const { return sound_; }

private:
    QCheckBox* bogie_ = nullptr;
    QCheckBox* sound_ = nullptr;
};

}  // namespace ferrolund::screens
