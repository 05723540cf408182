#include "screens/editor/dlgSearch.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "screens/app/qt_text.h"
#include "screens/editor/SearchBoxes.h"

namespace ferrolund::screens {

dlgSearch::dlgSearch(app::AppContext& ctx, QPlainTextEdit* pane, QWidget* parent) : QDialog(parent) {
    setObjectName("dlgSearch");
    setWindowTitle(ToQt(ctx.langText(415, "Find and Replace")));
    setModal(false);
    boxes_ = new SearchBoxes(ctx, pane, this);
    auto* ok = new QPushButton(ToQt(ctx.langText(9, "Exit")), this);
    ok->setObjectName("OKButton");
    ok->setAutoDefault(false);
    connect(ok, &QPushButton::clicked, this, &QDialog::hide);
    // mnuNext: Find Next from anywhere in the dialog.
    auto* next = new QAction(this);
    next->setObjectName("mnuNext");
    next->setShortcut(QKeySequence(Qt::Key_F3));
    connect(next, &QAction::triggered, boxes_, &SearchBoxes::findNext);
    addAction(next);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(ok);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(boxes_);
    layout->addLayout(buttons);
    resize(460, sizeHint().height());
}

dlgSearch* dlgSearch::ShowFor(app::AppContext& ctx, QPlainTextEdit* pane, QWidget* window) {
    auto* dialog = window->findChild<dlgSearch*>("dlgSearch", Qt::FindDirectChildrenOnly);
    if (!dialog) dialog = new dlgSearch(ctx, pane, window);
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
    dialog->boxes()->searchFor()->setFocus();
    return dialog;
}

}  // namespace ferrolund::screens
