#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QKeyEvent>
#include <gtest/gtest.h>

#include "editor_fixture.h"
#include "screens/editor/SearchBoxes.h"
#include "screens/editor/dlgSearch.h"

namespace ferrolund::screens {
namespace {

struct Search : testing::EditorFixture {
    QWidget window;
    QPlainTextEdit* pane = new QPlainTextEdit(&window);
    Search() {
        pane->setPlainText("word sword word\nwords word");
        window.resize(500, 300);
        window.show();
    }
    QPushButton* button(QWidget* dialog, const char* name) { return dialog->findChild<QPushButton*>(name); }
    QString selection() const { return pane->textCursor().selectedText(); }
    int selStart() const { return pane->textCursor().selectionStart(); }
};

TEST(dlgSearch, IsOneModelessChildOfTheWindowWithTheLanguageCaptions) {
    Search s;
    dlgSearch* dialog = dlgSearch::ShowFor(s.ctx, s.pane, &s.window);
    EXPECT_EQ(dialog->objectName(), "dlgSearch");
    EXPECT_FALSE(dialog->isModal());
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(dlgSearch::ShowFor(s.ctx, s.pane, &s.window), dialog);
    EXPECT_EQ(dialog->windowTitle(), "Find and Replace");
    EXPECT_EQ(s.button(dialog, "Command4")->text(), "&Find");
    EXPECT_EQ(s.button(dialog, "Command2")->text(), "Find &Next");
    EXPECT_EQ(s.button(dialog, "Command5")->text(), "Replace");
    EXPECT_EQ(s.button(dialog, "Command6")->text(), "Replace All");
    EXPECT_EQ(s.button(dialog, "Command1")->text(), "Clear All");
    EXPECT_EQ(s.button(dialog, "OKButton")->text(), "Exit");
    EXPECT_EQ(dialog->findChild<QCheckBox*>("Check1")->text(), "Whole Word only");
    testing::Screenshot(*dialog, "dlgSearch");
    s.button(dialog, "OKButton")->click();
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(s.window.findChildren<dlgSearch*>().size(), 1);
}

TEST(dlgSearch, FindFindNextWholeWordAndEnter) {
    Search s;
    dlgSearch dialog(s.ctx, s.pane, &s.window);
    dialog.show();
    SearchBoxes* boxes = dialog.boxes();
    boxes->searchFor()->setText("WORD");
    s.button(&dialog, "Command4")->click();
    EXPECT_EQ(s.selStart(), 6);  // Find starts at the second character
    EXPECT_EQ(s.selection(), "word");
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QApplication::sendEvent(boxes->searchFor(), &enter);  // Enter is Find Next
    EXPECT_EQ(s.selStart(), 11);
    boxes->wholeWord()->setChecked(true);
    s.button(&dialog, "Command2")->click();
    EXPECT_EQ(s.selStart(), 22);  // "words" is passed over
    EXPECT_EQ(boxes->state().searchFound, 22);
    s.button(&dialog, "Command2")->click();
    EXPECT_EQ(boxes->state().searchFound, -1);
    EXPECT_EQ(s.selStart(), 22);
}

TEST(dlgSearch, ReplaceAndReplaceAllWithTheSearchTextInTheReplacement) {
    Search s;
    dlgSearch dialog(s.ctx, s.pane, &s.window);
    SearchBoxes* boxes = dialog.boxes();
    boxes->searchFor()->setText("word");
    boxes->replaceWith()->setText("a word");
    s.button(&dialog, "Command4")->click();
    s.button(&dialog, "Command5")->click();
    EXPECT_EQ(s.pane->toPlainText(), "word sa word word\nwords word");
    boxes->wholeWord()->setChecked(true);  // Replace All ignores it
    s.button(&dialog, "Command6")->click();
    EXPECT_EQ(s.pane->toPlainText(), "word sa a word a word\na words a word");
    // One step to undo.
    s.pane->undo();
    EXPECT_EQ(s.pane->toPlainText(), "word sa word word\nwords word");
    s.button(&dialog, "Command1")->click();
    EXPECT_EQ(boxes->searchFor()->text(), "");
    EXPECT_EQ(boxes->replaceWith()->text(), "");
    s.button(&dialog, "Command6")->click();  // nothing to search: nothing happens
    EXPECT_EQ(s.pane->toPlainText(), "word sa word word\nwords word");
}

}  // namespace
}  // namespace ferrolund::screens
