#pragma once
// frmBlue, "BluePrint Designer": the boxes of one of the program's list blueprints (a
// named list, a series, a route's markers) and "&Make Blueprint", which writes the filled
// template to the caller's folder under the name given.

#include <QDialog>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "assets/clone_designer.h"

class QLineEdit;
class QPushButton;

namespace ferrolund::screens {

class frmBlue : public QDialog {
    Q_OBJECT
public:
    frmBlue(app::AppContext& ctx, assets::DesignerForm form, const std::string& folder, QWidget* parent = nullptr);

    QLineEdit* nameBox() const { return name_; }
    const std::vector<QLineEdit*>& boxes() const { return boxes_; }
    QPushButton* makeButton() const { return make_; }
    // The file the last "&Make Blueprint" wrote; empty before.
    const std::string& written() const { return written_; }

    void makeBlueprint();

private:
    app::AppContext& ctx_;
    assets::DesignerForm form_;
    std::string folder_;
    QLineEdit* name_ = nullptr;
    std::vector<QLineEdit*> boxes_;
    QPushButton* make_ = nullptr;
    std::string written_;
};

// Opens the designer on the form the caller chose, to write into `folder`; not modal,
// deleted when closed.
frmBlue* ShowBlue(app::AppContext& ctx, QWidget* parent, assets::DesignerForm form, const std::string& folder);

}  // namespace ferrolund::screens
