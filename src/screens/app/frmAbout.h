#pragma once
// The About screen: title, version and notice; its check box is line 14 of the settings.

#include <QDialog>

#include "app/app_context.h"

class QCheckBox;

namespace ferrolund::screens {

class frmAbout : public QDialog {
    Q_OBJECT
public:
    frmAbout(app::AppContext& ctx, QWidget* parent = nullptr);
    QCheckBox* doNotShow() const { return check_; }

private:
    QCheckBox* check_ = nullptr;
};

}  // namespace ferrolund::screens
