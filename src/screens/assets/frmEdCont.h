#pragma once
// frmEdCont, the small editor of a file chosen on the content list: the file's text (a
// game binary as its XML) in a pane, a picture as itself, and Save, which turns the text
// back into the file with a back-up of the old one and logs its steps below the pane. The
// logic is the ContentEditor model's; this form holds the widgets.

#include <QDialog>
#include <string>

#include "app/app_context.h"
#include "assets/content_edit.h"

class QAction;
class QLabel;
class QListWidget;
class QPlainTextEdit;

namespace ferrolund::screens {

class frmEdCont : public QDialog {
    Q_OBJECT
public:
    frmEdCont(app::AppContext& ctx, QWidget* parent = nullptr);

    assets::ContentEditor& editor() { return editor_; }
    QPlainTextEdit* pane() const { return text_; }
    QListWidget* log() const { return log_; }
    QAction* saveAction() const { return save_; }

    // Opens the file in the pane (or the picture box); false when it could not be opened.
    bool openFile(const std::string& path);
    // mnuSaveRS_Click: the pane's text back into the file.
    bool save();

private:
    void display(const std::string& path);

    app::AppContext& ctx_;
    assets::ContentEditor editor_;
    QPlainTextEdit* text_;
    QLabel* picture_;
    QListWidget* log_;
    QAction* save_;
};

// Opens the editor on a file, not modal, deleted when closed; null when the file could
// not be opened (the user has been told why).
frmEdCont* ShowContentEditor(app::AppContext& ctx, QWidget* parent, const std::string& path);

}  // namespace ferrolund::screens
