#pragma once
// dlgConGen, "Generate Consist": the number of wagons and the randomness of a consist drawn
// from the pool of wagons.

#include <QDialog>

class QLineEdit;

namespace ferrolund::screens {

class dlgConGen : public QDialog {
    Q_OBJECT
public:
    explicit dlgConGen(QWidget* parent = nullptr);

    QLineEdit* wagonsBox() const { return wagons_; }
    QLineEdit* randomnessBox() const { return randomness_; }
    // Each box's value as a whole number ("" is 0).
    long wagons() const;
    long randomness() const;

private:
    QLineEdit* wagons_;
    QLineEdit* randomness_;
};

}  // namespace ferrolund::screens
