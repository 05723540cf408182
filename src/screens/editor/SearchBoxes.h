#pragma once
// The search boxes and buttons of dlgSearch, which frmFolder5 carries as well: Text2
// (search for), Text3 (replace with), Check1 (whole word only) and the buttons Find,
// Find Next, Replace, Replace All and Clear All, working on one text pane.

#include <QWidget>
#include <memory>
#include <string>

#include "app/app_context.h"
#include "editor/text_find.h"
#include "screens/app/qt_text.h"

class QCheckBox;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace ferrolund::screens {

// A plain-text pane as the search commands see it.
class PaneSearch : public editor::SearchPane {
public:
    explicit PaneSearch(QPlainTextEdit* pane) : pane_(pane) {}
    std::string text() const override;
    long selStart() const override;
    void setSelStart(long position) override;
    long find(std::string_view what, long start, bool wholeWord) override;
    void replaceSelection(std::string_view text) override;
    void replaceText(const std::string& text) override;
    // How the pane holds its text.
    PaneEncoding encoding() const;

private:
    int character(long byte) const;
    QPlainTextEdit* pane_;
};

class SearchBoxes : public QWidget {
    Q_OBJECT
public:
    SearchBoxes(app::AppContext& ctx, QPlainTextEdit* pane, QWidget* parent = nullptr);

    void find();        // Command4
    void findNext();    // Command2, and Enter in Text2
    void replace();     // Command5
    void replaceAll();  // Command6
    void clearAll();    // Command1

    const editor::TextSearch& state() const { return search_; }
    QLineEdit* searchFor() const { return text2_; }
    QLineEdit* replaceWith() const { return text3_; }
    QCheckBox* wholeWord() const { return check1_; }

private:
    QPushButton* addButton(const char* name, int langIndex, const char* fallback);
    // What is typed in a box, as bytes of the pane's text.
    std::string typed(const QLineEdit* box) const;

    app::AppContext& ctx_;
    PaneSearch pane_;
    editor::TextSearch search_;
    QLineEdit* text2_ = nullptr;
    QLineEdit* text3_ = nullptr;
    QCheckBox* check1_ = nullptr;
};

}  // namespace ferrolund::screens
