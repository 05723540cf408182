// The editor's pane holds a file's text as the file holds it: UTF-8 decoded, other text a
// character per byte. Searches and replacements count in bytes, as the text routines do,
// and land on the right characters; the bytes go back as they came.
#include <QPlainTextEdit>
#include <gtest/gtest.h>

#include <string>

#include "screens/app/qt_text.h"
#include "screens/editor/SearchBoxes.h"

namespace ferrolund::screens {
namespace {

void Load(QPlainTextEdit& pane, const std::string& text) {
    const PaneEncoding encoding = PaneEncodingOf(text);
    SetPaneEncoding(&pane, encoding);
    pane.setPlainText(PaneToQt(text, encoding));
}

TEST(PaneText, BytesComeBackAsTheyCame) {
    const struct {
        const char* name;
        std::string text;
        PaneEncoding encoding;
        const char* shown;  // UTF-8 of what the pane shows
    } cases[] = {
        {"ASCII", "<Name>Oak</Name>", PaneEncoding::Utf8, "<Name>Oak</Name>"},
        {"UTF-8", "<Name>N\xC3\xA1" "dra\xC5\xBE\xC3\xAD</Name>", PaneEncoding::Utf8, "<Name>N\xC3\xA1" "dra\xC5\xBE\xC3\xAD</Name>"},
        {"outside the plane", "<N>\xF0\x9F\x9A\x82</N>", PaneEncoding::Utf8, "<N>\xF0\x9F\x9A\x82</N>"},
        {"Windows-1252", "<Name>Caf\xE9 \x80</Name>", PaneEncoding::Bytes, "<Name>Caf\xC3\xA9 \xE2\x82\xAC</Name>"},
        {"broken UTF-8", "<N>\xC3</N>", PaneEncoding::Bytes, "<N>\xC3\x83</N>"},
    };
    for (const auto& c : cases) {
        QPlainTextEdit pane;
        Load(pane, c.text);
        EXPECT_EQ(PaneEncodingOf(&pane), c.encoding) << c.name;
        EXPECT_EQ(pane.toPlainText(), QString::fromUtf8(c.shown)) << c.name;
        EXPECT_EQ(PaneFromQt(pane.toPlainText(), PaneEncodingOf(&pane)), c.text) << c.name;
    }
}

TEST(PaneText, SearchAndReplaceLandOnTheCharacters) {
    QPlainTextEdit pane;
    // Two-, three- and four-byte characters before the word looked for.
    Load(pane, "\xC4\x8C" "esk\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x9A\x82 N\xC3\xA1" "dra\xC5\xBE\xC3\xAD end");
    PaneSearch search(&pane);
    const std::string word = "N\xC3\xA1" "dra\xC5\xBE\xC3\xAD";
    const long hit = search.find(word, 0, false);
    EXPECT_EQ(hit, static_cast<long>(search.text().find(word)));
    EXPECT_EQ(pane.textCursor().selectedText(), QString::fromUtf8(word));
    EXPECT_EQ(search.selStart(), hit);
    search.replaceSelection("Gare");
    EXPECT_EQ(search.text(), "\xC4\x8C" "esk\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x9A\x82 Gare end");
    search.setSelStart(hit);
    EXPECT_EQ(pane.textCursor().position(), pane.toPlainText().indexOf("Gare"));
}

}  // namespace
}  // namespace ferrolund::screens
