#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QKeyEvent>
#include <gtest/gtest.h>

#include "app/startup.h"
#include "screen_fixture.h"
#include "screens/app/frmEditor.h"
#include "screens/app/qt_text.h"
#include "screens/app/qt_ui.h"
#include "screens/editor/XmlTreePane.h"
#include <QTreeView>
#include "serz/codec.h"

namespace ferrolund::screens {
namespace {

namespace fs = std::filesystem;

const std::string kXml =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
    "<cRecordSet xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\" d:id=\"7\">\r\n"
    "\t<Record>\r\n"
    "\t\t<Name d:type=\"cDeltaString\">Br\xC3\xBC" "cke</Name>\r\n"
    "\t</Record>\r\n"
    "</cRecordSet>\r\n";

void PressKey(QWidget* widget, Qt::Key key, const QString& text) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(widget, &press);
}

struct DocumentEditor : testing::ScreenFixture {
    QtUi qtUi;
    frmEditor window{ctx, qtUi};
    std::string file;
    DocumentEditor() {
        fs::create_directories(root.path() / "TempFiles");
        std::string bin;
        EXPECT_FALSE(serz::XmlToBinary(kXml, bin));
        file = root.write("game/Content/Routes/r1/Scenery/+000000+000000.bin", bin).string();
        ctx.prefs.gameRoot = (root.path() / "game").string();
        app::StartOptions options;
        window.show();
        app::StartUp(ctx, window, options);
        ctx.prefs.noAskOnExit = true;
    }
    void open() {
        ui.files.push_back(file);
        window.menuAction("mnuOpenRS")->trigger();
        QApplication::processEvents();
    }
};

TEST(frmEditorDocument, OpenShowsTheTextAndTypingMarksABinDocument) {
    DocumentEditor e;
    e.open();
    testing::Screenshot(e.window, "frmEditor_document");
    // The converter's UTF-8 reads as written: "Brücke", not its two bytes.
    EXPECT_EQ(e.window.textPane()->toPlainText().toStdString(), QString::fromStdString(kXml).replace("\r\n", "\n").toStdString());
    EXPECT_TRUE(e.window.textPane()->toPlainText().contains(QString::fromUtf8("Br\xC3\xBC" "cke")));
    EXPECT_EQ(e.window.findChild<QLineEdit*>("Text1")->text().toStdString(), e.file);
    EXPECT_TRUE(e.window.menuAction("mnuSaveRS")->isEnabled());
    EXPECT_FALSE(e.window.document().editedFlag);
    e.window.textPane()->setFocus();
    PressKey(e.window.textPane(), Qt::Key_Space, " ");
    EXPECT_TRUE(e.window.document().editedFlag);
}

TEST(frmEditorDocument, SaveWritesTheBinaryBackWithABackup) {
    DocumentEditor e;
    e.open();
    QString text = e.window.textPane()->toPlainText();
    text.replace(QString::fromUtf8("Br\xC3\xBC" "cke"), "Steg");
    e.window.textPane()->setPlainText(text);
    e.window.menuAction("mnuSaveRS")->trigger();
    std::string xml;
    ASSERT_FALSE(serz::BinaryToXml(e.root.read("game/Content/Routes/r1/Scenery/+000000+000000.bin"), xml));
    EXPECT_NE(xml.find(">Steg<"), std::string::npos);
    EXPECT_TRUE(fs::exists(e.root.path() / "game/Content/Routes/r1/Scenery/+000000+000000.bin.bak"));
    EXPECT_TRUE(e.window.document().savedFlag);
    EXPECT_TRUE(e.ui.shown.empty());
}

TEST(frmEditorDocument, PlainXmlKeepsItsLineEndsThroughThePane) {
    for (const char* text : {"<a>\r\n\t<b/>\r\n</a>\r\n", "<a>\n<b/>\n</a>\n"}) {
        DocumentEditor e;
        const std::string file = e.root.write("game/x.xml", text).string();
        e.ui.files = {file, (e.root.path() / "out.xml").string()};
        e.window.menuAction("mnuXML")->trigger();
        e.window.menuAction("mnuSavexml")->trigger();
        EXPECT_EQ(e.root.read("out.xml"), text);
    }
}

TEST(frmEditorDocument, TheTreeTabShowsTheOpenDocument) {
    DocumentEditor e;
    e.open();
    auto* tabs = e.window.tabs();
    tabs->setCurrentWidget(e.window.treePane());
    EXPECT_TRUE(e.window.document().treeLoaded);
    ASSERT_NE(e.window.treePane()->tree()->model(), nullptr);
    EXPECT_GT(e.window.treePane()->tree()->model()->rowCount(), 0);
    testing::Screenshot(e.window, "frmEditor_tree");
    EXPECT_TRUE(e.ui.shown.empty());
    tabs->setCurrentIndex(0);
    e.open();  // a new document: the tree loads again when its tab is chosen
    EXPECT_FALSE(e.window.document().treeLoaded);
}

TEST(frmEditorDocument, HighlightButtonTogglesItsCaption) {
    DocumentEditor e;
    e.open();
    auto* button = e.window.findChild<QPushButton*>("Command1");
    ASSERT_TRUE(button->isEnabled());
    EXPECT_EQ(button->text(), ToQt(*e.ctx.lang.text(62)));
    button->click();
    EXPECT_EQ(button->text(), ToQt(*e.ctx.lang.text(311)));
    testing::Screenshot(e.window, "frmEditor_highlighted");
    button->click();
    EXPECT_EQ(button->text(), ToQt(*e.ctx.lang.text(62)));
}

TEST(frmEditorDocument, SecondPaneOpensBesideTheFirst) {
    DocumentEditor e;
    e.open();
    EXPECT_FALSE(e.window.secondPane()->isVisible());
    EXPECT_FALSE(e.window.menuAction("mnuFile2")->isVisible());
    e.window.menuAction("mnu2bin")->trigger();
    EXPECT_TRUE(e.window.secondPane()->isVisible());
    EXPECT_TRUE(e.window.menuAction("mnuFile2")->isVisible());
    EXPECT_EQ(e.window.menuAction("mnu2bin")->text(), "Close 2nd Window");
    e.ui.files.push_back(e.file);
    e.window.menuAction("mnuFile2")->trigger();
    EXPECT_FALSE(e.window.secondPane()->toPlainText().isEmpty());
    testing::Screenshot(e.window, "frmEditor_second_pane");
    e.window.menuAction("mnu2bin")->trigger();
    EXPECT_FALSE(e.window.secondPane()->isVisible());
}

TEST(frmEditorDocument, RouteListTabLoadsTheIndexAndOpensAFileOfTheRoute) {
    DocumentEditor e;
    e.root.write("IndexFiles/RouteIndex.csv", "Nordbahn,r1,0\r\nSüdbahn,r2,1\r\n\r\n");
    auto* tabs = e.window.tabs();
    tabs->setCurrentIndex(tabs->count() - 1);
    auto* grid = e.window.findChild<QTableWidget*>("VSFG1");
    ASSERT_EQ(grid->rowCount(), 2);
    EXPECT_EQ(grid->item(0, 0)->text(), "Nordbahn");
    testing::Screenshot(e.window, "frmEditor_route_list");
    grid->setCurrentCell(0, 0);
    e.ui.files.push_back(e.file);
    e.window.findChild<QPushButton*>("Command8")->click();
    EXPECT_EQ(e.ui.dialogTitles, std::vector<std::string>{"Open TrainSim file"});  // no second dialog
    EXPECT_EQ(tabs->currentIndex(), 0);
    EXPECT_FALSE(e.window.textPane()->toPlainText().isEmpty());
    e.window.findChild<QPushButton*>("Command12")->click();
    EXPECT_EQ(grid->rowCount(), 0);
}

TEST(frmEditorDocument, ClosingAfterTypingWarnsWhenAskedTo) {
    DocumentEditor e;
    e.ctx.prefs.warnIfNotSaved = true;
    e.open();
    PressKey(e.window.textPane(), Qt::Key_A, "a");
    e.ui.answers.push_back(base::Answer::No);
    EXPECT_FALSE(e.window.close());
    EXPECT_EQ(e.ui.shown.back().text.rfind("You edited a file in the .bin file editor", 0), 0u);
}

}  // namespace
}  // namespace ferrolund::screens
