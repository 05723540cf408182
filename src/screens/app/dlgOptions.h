#pragma once
// "Current Options Settings": the paths and the language now in use, for reading only.

#include <QDialog>

#include "app/app_context.h"

namespace ferrolund::screens {

class dlgOptions : public QDialog {
    Q_OBJECT
public:
    dlgOptions(const app::AppContext& ctx, QWidget* parent = nullptr);
};

}  // namespace ferrolund::screens
