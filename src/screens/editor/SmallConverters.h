#pragma once
// The small tools of the menu: dlgTime, "Convert TS-Classic Time to Hrs/Mins", and
// dlgGUID, "Generate GUID".

#include <QDialog>

#include "app/app_context.h"

class QLineEdit;
class QPlainTextEdit;

namespace ferrolund::screens {

class dlgTime : public QDialog {
    Q_OBJECT
public:
    explicit dlgTime(QWidget* parent = nullptr);
    // OKButton, "Convert": the empty box receives the other one's time.
    void convert();
    // Command1: both boxes emptied.
    void clearBoxes();
    QLineEdit* simulatorTime() const { return text1_; }
    QLineEdit* clockTime() const { return text2_; }

private:
    QLineEdit* text1_ = nullptr;
    QLineEdit* text2_ = nullptr;
};

class dlgGUID : public QDialog {
    Q_OBJECT
public:
    explicit dlgGUID(QWidget* parent = nullptr);
    QPlainTextEdit* text() const { return text1_; }

private:
    QPlainTextEdit* text1_ = nullptr;
};

}  // namespace ferrolund::screens
