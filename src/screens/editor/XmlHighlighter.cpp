#include "screens/editor/XmlHighlighter.h"

#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>

namespace ferrolund::screens {

namespace {
// Lines above and below the screen that are coloured with it, so that scrolling a little
// finds them ready.
constexpr int kMarginLines = 200;
// A line's stored state: the rules' state, and this bit once the line has its colours.
constexpr int kColouredBit = 16;
}  // namespace

XmlHighlighter::XmlHighlighter(QPlainTextEdit* pane) : QSyntaxHighlighter(static_cast<QObject*>(nullptr)), pane_(pane) {
    for (int i = 0; i < 5; ++i) {
        const editor::Rgb rgb = editor::RgbOf(static_cast<editor::XmlColour>(i));
        formats_[static_cast<std::size_t>(i)].setForeground(QColor(rgb.red, rgb.green, rgb.blue));
    }
    findShownLines();
    setDocument(pane->document());
    connect(pane, &QPlainTextEdit::updateRequest, this, [this] { colourShownLines(); });
}

void XmlHighlighter::findShownLines() {
    if (!pane_) return;
    const int top = pane_->cursorForPosition(QPoint(0, 0)).blockNumber();
    const int bottom = pane_->cursorForPosition(QPoint(0, pane_->viewport()->height())).blockNumber();
    firstShown_ = top - kMarginLines;
    lastShown_ = bottom + kMarginLines;
}

void XmlHighlighter::colourAll() {
    findShownLines();
    rehighlight();
}

void XmlHighlighter::colourShownLines() {
    if (colouringShown_ || !pane_ || !document()) return;
    colouringShown_ = true;
    findShownLines();
    const int last = std::min(lastShown_, document()->blockCount() - 1);
    for (QTextBlock block = document()->findBlockByNumber(std::max(firstShown_, 0));
         block.isValid() && block.blockNumber() <= last; block = block.next()) {
        if (block.userState() < 0 || (block.userState() & kColouredBit) == 0) rehighlightBlock(block);
    }
    colouringShown_ = false;
}

void XmlHighlighter::highlightBlock(const QString& text) {
    // The rules look at ASCII characters only; every other character stands in as one
    // byte that no rule matches, so positions stay those of the line.
    line_.resize(static_cast<std::size_t>(text.size()));
    const QChar* chars = text.constData();
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = chars[i].unicode();
        line_[static_cast<std::size_t>(i)] = c < 0x80 ? static_cast<char>(c) : '\x7f';
    }
    const int previous = previousBlockState();
    editor::ColourState state = editor::ColourState::fromInt(previous < 0 ? previous : previous & ~kColouredBit);
    spans_.clear();
    editor::ColourLine(line_, state, spans_);
    const int number = currentBlock().blockNumber();
    const bool shown = number >= firstShown_ && number <= lastShown_;
    if (shown) {
        for (const editor::ColourSpan& span : spans_) {
            setFormat(static_cast<int>(span.start), static_cast<int>(span.length), format(span.colour));
        }
    }
    setCurrentBlockState(state.toInt() | (shown ? kColouredBit : 0));
}

}  // namespace ferrolund::screens
