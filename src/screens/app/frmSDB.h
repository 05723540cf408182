#pragma once
// "SDBCache Options": the simulator's cache files, removed, put aside or opened.

#include <QDialog>
#include <functional>

#include "app/app_context.h"

namespace ferrolund::screens {

class frmSDB : public QDialog {
    Q_OBJECT
public:
    // `openInEditor` opens GameRoot\Content\SDBCache.bin in the editor's pane.
    frmSDB(app::AppContext& ctx, std::function<void()> openInEditor, QWidget* parent = nullptr);
};

}  // namespace ferrolund::screens
