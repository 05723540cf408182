#pragma once
// dlgSearch, "Find and Replace": search and replace in the editor's main pane. It stays
// open beside the window; OK hides it, and the window closes it at exit.

#include <QDialog>

#include "app/app_context.h"

class QPlainTextEdit;

namespace ferrolund::screens {

class SearchBoxes;

class dlgSearch : public QDialog {
    Q_OBJECT
public:
    dlgSearch(app::AppContext& ctx, QPlainTextEdit* pane, QWidget* parent = nullptr);
    SearchBoxes* boxes() const { return boxes_; }

    // mnuFind: shows the window's dialog, made on first use.
    static dlgSearch* ShowFor(app::AppContext& ctx, QPlainTextEdit* pane, QWidget* window);

private:
    SearchBoxes* boxes_ = nullptr;
};

}  // namespace ferrolund::screens
