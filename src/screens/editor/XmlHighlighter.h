#pragma once
// The colours of "Highlight XML" on a plain-text pane: a syntax highlighter that colours
// each line by the editor's span rules, carrying the rules' state from line to line, so
// typing in a large coloured document stays quick.

#include <QSyntaxHighlighter>
#include <QTextCharFormat>
#include <array>
#include <vector>

#include "editor/xml_colour.h"

namespace ferrolund::screens {

class XmlHighlighter : public QSyntaxHighlighter {
    Q_OBJECT
public:
    explicit XmlHighlighter(QTextDocument* document);

    // The format a colour index shows with.
    const QTextCharFormat& format(editor::XmlColour colour) const {
        return formats_[static_cast<std::size_t>(colour)];
    }

protected:
    void highlightBlock(const QString& text) override;

private:
    std::array<QTextCharFormat, 5> formats_;
    std::string line_;
    std::vector<editor::ColourSpan> spans_;
};

}  // namespace ferrolund::screens
