#pragma once
// How to send the error log with a report of a problem.

#include <QDialog>

#include "app/app_context.h"

namespace ferrolund::screens {

class frmEmail : public QDialog {
    Q_OBJECT
public:
    frmEmail(const app::AppContext& ctx, QWidget* parent = nullptr);
};

}  // namespace ferrolund::screens
