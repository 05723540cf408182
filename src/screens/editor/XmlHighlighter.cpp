#include "screens/editor/XmlHighlighter.h"

namespace ferrolund::screens {

XmlHighlighter::XmlHighlighter(QTextDocument* document) : QSyntaxHighlighter(static_cast<QObject*>(nullptr)) {
    for (int i = 0; i < 5; ++i) {
        const editor::Rgb rgb = editor::RgbOf(static_cast<editor::XmlColour>(i));
        formats_[static_cast<std::size_t>(i)].setForeground(QColor(rgb.red, rgb.green, rgb.blue));
    }
    setDocument(document);
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
    editor::ColourState state = editor::ColourState::fromInt(previousBlockState());
    spans_.clear();
    editor::ColourLine(line_, state, spans_);
    for (const editor::ColourSpan& span : spans_) {
        setFormat(static_cast<int>(span.start), static_cast<int>(span.length), format(span.colour));
    }
    setCurrentBlockState(state.toInt());
}

}  // namespace ferrolund::screens
