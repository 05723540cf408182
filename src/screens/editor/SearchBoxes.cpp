#include "screens/editor/SearchBoxes.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextBlock>

#include "screens/app/qt_text.h"

namespace ferrolund::screens {

PaneEncoding PaneSearch::encoding() const { return PaneEncodingOf(pane_); }

std::string PaneSearch::text() const { return PaneFromQt(pane_->toPlainText(), PaneEncodingOf(pane_)); }

long PaneSearch::selStart() const {
    const long character = pane_->textCursor().selectionStart();
    const PaneEncoding encoding = PaneEncodingOf(pane_);
    return encoding == PaneEncoding::Bytes ? character : PaneByteAt(pane_->toPlainText(), character, encoding);
}

// The pane's character position of a byte position in text().
int PaneSearch::character(long byte) const {
    const PaneEncoding encoding = PaneEncodingOf(pane_);
    return static_cast<int>(encoding == PaneEncoding::Bytes ? byte
                                                            : PaneCharacterAt(pane_->toPlainText(), byte, encoding));
}

void PaneSearch::setSelStart(long position) {
    QTextCursor cursor = pane_->textCursor();
    const int end = pane_->document()->characterCount() - 1;
    cursor.setPosition(std::clamp(character(position), 0, end));
    pane_->setTextCursor(cursor);
}

long PaneSearch::find(std::string_view what, long start, bool wholeWord) {
    const long hit = editor::FindInText(text(), what, start, wholeWord);
    if (hit < 0) return hit;
    QTextCursor cursor = pane_->textCursor();
    cursor.setPosition(character(hit));
    cursor.setPosition(character(hit + static_cast<long>(what.size())), QTextCursor::KeepAnchor);
    pane_->setTextCursor(cursor);
    pane_->ensureCursorVisible();
    return hit;
}

void PaneSearch::replaceSelection(std::string_view text) {
    QTextCursor cursor = pane_->textCursor();
    cursor.insertText(PaneToQt(std::string(text), PaneEncodingOf(pane_)));
    pane_->setTextCursor(cursor);
}

void PaneSearch::replaceText(const std::string& text) {
    QTextCursor cursor(pane_->document());
    cursor.beginEditBlock();
    cursor.select(QTextCursor::Document);
    cursor.insertText(PaneToQt(text, PaneEncodingOf(pane_)));
    cursor.endEditBlock();
}

SearchBoxes::SearchBoxes(app::AppContext& ctx, QPlainTextEdit* pane, QWidget* parent)
    : QWidget(parent), ctx_(ctx), pane_(pane) {
    text2_ = new QLineEdit(this);
    text2_->setObjectName("Text2");
    text3_ = new QLineEdit(this);
    text3_->setObjectName("Text3");
    check1_ = new QCheckBox(ToQt(ctx_.langText(308, "Whole Word only")), this);
    check1_->setObjectName("Check1");

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(new QLabel("Search For:-", this), 0, 0);
    grid->addWidget(text2_, 0, 1, 1, 3);
    grid->addWidget(new QLabel("Replace With:-", this), 1, 0);
    grid->addWidget(text3_, 1, 1, 1, 3);
    grid->addWidget(check1_, 2, 1, 1, 3);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(addButton("Command4", 11, "&Find"));
    buttons->addWidget(addButton("Command2", 304, "Find &Next"));
    buttons->addWidget(addButton("Command5", 305, "Replace"));
    buttons->addWidget(addButton("Command6", 306, "Replace All"));
    buttons->addStretch(1);
    buttons->addWidget(addButton("Command1", 307, "Clear All"));
    grid->addLayout(buttons, 3, 0, 1, 4);
    grid->setColumnStretch(1, 1);

    connect(findChild<QPushButton*>("Command4"), &QPushButton::clicked, this, &SearchBoxes::find);
    connect(findChild<QPushButton*>("Command2"), &QPushButton::clicked, this, &SearchBoxes::findNext);
    connect(findChild<QPushButton*>("Command5"), &QPushButton::clicked, this, &SearchBoxes::replace);
    connect(findChild<QPushButton*>("Command6"), &QPushButton::clicked, this, &SearchBoxes::replaceAll);
    connect(findChild<QPushButton*>("Command1"), &QPushButton::clicked, this, &SearchBoxes::clearAll);
    connect(text2_, &QLineEdit::returnPressed, this, &SearchBoxes::findNext);
}

QPushButton* SearchBoxes::addButton(const char* name, int langIndex, const char* fallback) {
    auto* button = new QPushButton(ToQt(ctx_.langText(langIndex, fallback)), this);
    button->setObjectName(name);
    button->setAutoDefault(false);
    return button;
}

std::string SearchBoxes::typed(const QLineEdit* box) const { return PaneFromQt(box->text(), pane_.encoding()); }

void SearchBoxes::find() { search_.find(pane_, typed(text2_), check1_->isChecked()); }

void SearchBoxes::findNext() { search_.findNext(pane_, typed(text2_), check1_->isChecked()); }

void SearchBoxes::replace() { search_.replace(pane_, typed(text3_)); }

void SearchBoxes::replaceAll() {
    ctx_.ui->busy(true);
    search_.replaceAll(pane_, typed(text2_), typed(text3_));
    ctx_.ui->busy(false);
}

void SearchBoxes::clearAll() {
    text2_->clear();
    text3_->clear();
}

}  // namespace ferrolund::screens
