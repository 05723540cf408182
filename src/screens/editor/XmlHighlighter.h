#pragma once
// The colours of "Highlight XML" on a plain-text pane: a syntax highlighter that colours
// each line by the editor's span rules, carrying the rules' state from line to line.
//
// Every line's state is worked out, but only the lines on screen and a margin around
// them are given their colours; lines that scroll into view are coloured then. So a
// large document takes colour quickly and typing in it stays quick.

#include <QPointer>
#include <QSyntaxHighlighter>
#include <QTextCharFormat>
#include <array>
#include <string>
#include <vector>

#include "editor/xml_colour.h"

class QPlainTextEdit;

namespace ferrolund::screens {

class XmlHighlighter : public QSyntaxHighlighter {
    Q_OBJECT
public:
    explicit XmlHighlighter(QPlainTextEdit* pane);

    // The format a colour index shows with.
    const QTextCharFormat& format(editor::XmlColour colour) const {
        return formats_[static_cast<std::size_t>(colour)];
    }
    // Colours every line of the pane now, as the view was after the change.
    void colourAll();

protected:
    void highlightBlock(const QString& text) override;

private:
    void findShownLines();
    void colourShownLines();

    QPointer<QPlainTextEdit> pane_;
    std::array<QTextCharFormat, 5> formats_;
    std::string line_;
    std::vector<editor::ColourSpan> spans_;
    int firstShown_ = 0;
    int lastShown_ = 0;
    bool colouringShown_ = false;
};

}  // namespace ferrolund::screens
