#pragma once
// dlgNotInScenarios: whether the check of the consists leaves out the stock that
// scenarios already use ("OK") or lists every entry ("CHECK  ALL ASSETS").

#include <QDialog>

class QPushButton;

namespace ferrolund::screens {

class dlgNotInScenarios : public QDialog {
    Q_OBJECT
public:
    explicit dlgNotInScenarios(QWidget* parent = nullptr);

    // Set when the dialog was closed with OK.
    bool ignoreListed() const { return ignoreListed_; }
    QPushButton* okButton() const { return ok_; }
    QPushButton* allButton() const { return all_; }

private:
    bool ignoreListed_ = false;
    QPushButton* ok_;
    QPushButton* all_;
};

// Asks; false when the dialog was closed without an answer.
bool AskNotInScenarios(QWidget* parent, bool& ignoreListed);

}  // namespace ferrolund::screens
