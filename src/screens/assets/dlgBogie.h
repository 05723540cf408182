#pragma once
// dlgBogie, "Bogie Audio Control Name": which of the simulator's bogie sounds the
// selected stock is given.

#include <QDialog>
#include <string>

class QRadioButton;

namespace ferrolund::screens {

class dlgBogie : public QDialog {
    Q_OBJECT
public:
    explicit dlgBogie(QWidget* parent = nullptr);
    // The word chosen, "RA_BG_Mk3" (checked at first), "RA_BG_Mk1", "BG_Modern" or "BG_Steam".
    std::string choice() const;
    QRadioButton* option(const std::string& word) const;
};

}  // namespace ferrolund::screens
