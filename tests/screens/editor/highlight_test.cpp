#include <QApplication>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextBlock>
#include <QTextLayout>
#include <QVBoxLayout>
#include <gtest/gtest.h>

#include "editor_fixture.h"
#include "screens/editor/HighlightController.h"

namespace ferrolund::screens {
namespace {

struct Highlight : testing::EditorFixture {
    QWidget window;
    QPushButton* button = new QPushButton(&window);
    QPlainTextEdit* pane = new QPlainTextEdit(&window);
    QPlainTextEdit* second = new QPlainTextEdit(&window);
    std::string name = "C:\\RailWorks\\Content\\Routes\\r\\RouteProperties.bin";
    HighlightController controller{ctx, button, pane, second, [this] { return name; }, &window};

    Highlight() {
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(button);
        layout->addWidget(pane);
        layout->addWidget(second);
        second->hide();
        window.resize(520, 300);
        window.show();
    }
    // The colour a character of the pane shows, or black where no span lies.
    static QColor ColourAt(QPlainTextEdit* edit, int position) {
        const QTextBlock block = edit->document()->findBlock(position);
        const int inBlock = position - block.position();
        for (const QTextLayout::FormatRange& range : block.layout()->formats()) {
            if (inBlock >= range.start && inBlock < range.start + range.length) return range.format.foreground().color();
        }
        return Qt::black;
    }
};

const QColor kTag(0, 0, 0xC0);
const QColor kName(0xC0, 0, 0xC0);
const QColor kValue(0, 0xC0, 0);
const QColor kComment(0x80, 0x80, 0x80);

TEST(HighlightController, ColoursTheFourRulesAndTakesThemOffAgain) {
    Highlight h;
    h.pane->setPlainText("<a x=\"1\">b=c</a>\n<!-- one\ntwo=\"2\" -->\n<b/>");
    EXPECT_EQ(h.button->text(), "Highlight XML");
    h.button->click();
    EXPECT_EQ(h.button->text(), "Remove Highlighting");
    EXPECT_TRUE(h.controller.colouring(h.pane));
    EXPECT_EQ(Highlight::ColourAt(h.pane, 0), kTag);
    EXPECT_EQ(Highlight::ColourAt(h.pane, 2), kName);  // the blank before x
    EXPECT_EQ(Highlight::ColourAt(h.pane, 4), kName);  // =
    EXPECT_EQ(Highlight::ColourAt(h.pane, 5), kValue);
    EXPECT_EQ(Highlight::ColourAt(h.pane, 8), kTag);   // >
    EXPECT_EQ(Highlight::ColourAt(h.pane, 10), Qt::black);  // b=c
    EXPECT_EQ(Highlight::ColourAt(h.pane, 12), kTag);
    // The comment is grey on both its lines.
    for (int p = 17; p < 37; ++p) {
        if (p != 25) {
            EXPECT_EQ(Highlight::ColourAt(h.pane, p), kComment) << p;
        }
    }
    EXPECT_EQ(Highlight::ColourAt(h.pane, 38), kTag);
    EXPECT_EQ(h.pane->textCursor().position(), 1);
    testing::Screenshot(h.window, "HighlightController");

    h.button->click();
    EXPECT_EQ(h.button->text(), "Highlight XML");
    EXPECT_FALSE(h.controller.colouring(h.pane));
    EXPECT_EQ(Highlight::ColourAt(h.pane, 0), Qt::black);
    EXPECT_EQ(h.pane->font().pointSize(), 11);
    EXPECT_TRUE(h.ui.shown.empty());
}

TEST(HighlightController, TypingInAColouredPaneColoursTheNewText) {
    Highlight h;
    h.pane->setPlainText("text\n");
    h.button->click();
    QTextCursor cursor(h.pane->document());
    cursor.movePosition(QTextCursor::End);
    cursor.insertText("<new k='v'>");
    EXPECT_EQ(Highlight::ColourAt(h.pane, 5), kTag);
    EXPECT_EQ(Highlight::ColourAt(h.pane, 10), kName);
    EXPECT_EQ(Highlight::ColourAt(h.pane, 13), kValue);
}

TEST(HighlightController, LinesScrolledIntoViewOfALongDocumentAreColoured) {
    Highlight h;
    QString text;
    for (int i = 0; i < 5000; ++i) text += QString("<Line n=\"%1\">text</Line>\n").arg(i);
    h.pane->setPlainText(text);
    h.button->click();
    EXPECT_EQ(Highlight::ColourAt(h.pane, 0), kTag);
    const QTextBlock last = h.pane->document()->findBlockByNumber(4999);
    h.pane->setTextCursor(QTextCursor(last));
    h.pane->ensureCursorVisible();
    QApplication::processEvents();
    EXPECT_EQ(Highlight::ColourAt(h.pane, last.position()), kTag);
    EXPECT_EQ(Highlight::ColourAt(h.pane, last.position() + 6), kName);
    // Typing far down a coloured document colours what is typed.
    QTextCursor cursor(last);
    cursor.insertText("<!-- note -->");
    EXPECT_EQ(Highlight::ColourAt(h.pane, last.position()), kComment);
}

TEST(HighlightController, GeometryAndTextureFilesAreRefused) {
    for (const char* name : {"C:\\a\\Box.GeoPcDx", "C:\\a\\box.geopcdx", "C:\\a\\Box.TgPcDx"}) {
        Highlight h;
        h.name = name;
        h.pane->setPlainText("<a/>");
        h.button->click();
        EXPECT_EQ(h.button->text(), "Highlight XML");
        EXPECT_FALSE(h.controller.colouring(h.pane));
        ASSERT_EQ(h.ui.shown.size(), 1u);
        EXPECT_EQ(h.ui.shown[0].text,
                  "Do not highlight the text in GeoPcDx or TgPcDx files\n"
                  "as the data blob section causes the option to lock up.");
        EXPECT_EQ(h.ui.shown[0].icon, base::Icon::Exclamation);
    }
}

TEST(HighlightController, AnEmptyPaneHasNoTextSelected) {
    Highlight h;
    h.button->click();
    EXPECT_EQ(h.ui.texts(), std::vector<std::string>{"No text selected"});
    EXPECT_EQ(h.button->text(), "Remove Highlighting");
    h.button->click();
    EXPECT_EQ(h.button->text(), "Highlight XML");
}

TEST(HighlightController, TheSecondPaneOnlyWhileItIsShown) {
    Highlight h;
    h.pane->setPlainText("<a/>");
    h.second->setPlainText("<b/>");
    h.button->click();
    EXPECT_FALSE(h.controller.colouring(h.second));
    h.button->click();
    h.second->show();
    h.button->click();
    EXPECT_TRUE(h.controller.colouring(h.second));
    EXPECT_EQ(Highlight::ColourAt(h.second, 0), kTag);
    h.button->click();
    EXPECT_FALSE(h.controller.colouring(h.second));
    EXPECT_EQ(h.second->font().pointSize(), 11);
}

TEST(HighlightController, AnyOtherCaptionDoesNothing) {
    Highlight h;
    h.pane->setPlainText("<a/>");
    h.button->setText("Something else");
    h.button->click();
    EXPECT_FALSE(h.controller.colouring(h.pane));
    EXPECT_EQ(h.button->text(), "Something else");
}

TEST(HighlightController, OpeningARefusedDocumentTakesTheColoursOff) {
    Highlight h;
    h.pane->setPlainText("<a/>");
    h.button->click();
    h.name = "C:\\a\\Box.GeoPcDx";
    h.pane->setPlainText("<d:blob>00</d:blob>");
    EXPECT_FALSE(h.controller.colouring(h.pane));
    EXPECT_EQ(h.button->text(), "Highlight XML");
    EXPECT_EQ(Highlight::ColourAt(h.pane, 0), Qt::black);
}

}  // namespace
}  // namespace ferrolund::screens
