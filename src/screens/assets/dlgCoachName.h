#pragma once
// dlgCoachName, "Save Rolling-Stock Item": the file name and internal name an edited item
// is saved under, with a suffix for what the item now is.

#include <QDialog>
#include <string>

class QLineEdit;
class QRadioButton;

namespace ferrolund::app {
struct AppContext;
}

namespace ferrolund::screens {

// The check of a name dialog's OK: false, after "You have failed to complete one of the
// boxes?", when a box is left empty.
bool BoxesComplete(app::AppContext& ctx, bool complete);

class dlgCoachName : public QDialog {
    Q_OBJECT
public:
    // `base` is the file's base name, `internalName` the item's name; `suffix` the choice
    // checked at first ("_MT", "_DO", "_PO", "_ND", "_DF", "_DR" or "_DEAD").
    dlgCoachName(app::AppContext& ctx, const std::string& base, const std::string& internalName,
                 const std::string& suffix, QWidget* parent = nullptr);
    std::string fileName() const;
    std::string internalName() const;
    QLineEdit* fileBox() const { return file_; }
    QLineEdit* nameBox() const { return name_; }
    void choose(const std::string& suffix);

private:
    void accept() override;
    app::AppContext& ctx_;
    std::string base_;
    std::string name_0_;
    std::string suffix_;
    QLineEdit* file_ = nullptr;
    QLineEdit* name_ = nullptr;
};

}  // namespace ferrolund::screens
