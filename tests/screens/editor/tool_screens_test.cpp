#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <regex>

#include "screens/app/frmEditor.h"
#include "screens/app/qt_ui.h"
#include "editor_fixture.h"
#include "screens/editor/SearchBoxes.h"
#include "screens/editor/SmallConverters.h"
#include "screens/editor/dlgSearch.h"
#include "screens/editor/frmFolder5.h"
#include "screens/editor/frmMain.h"
#include "serz/codec.h"

namespace ferrolund::screens {
namespace {

namespace fs = std::filesystem;

TEST(dlgTime, ConvertsBothWaysAndNeedsOneEmptyBox) {
    dlgTime dialog;
    EXPECT_EQ(dialog.windowTitle(), "Convert TS-Classic Time to Hrs/Mins");
    EXPECT_EQ(dialog.findChild<QPushButton*>("OKButton")->text(), "Convert");
    dialog.simulatorTime()->setText("19800");
    dialog.findChild<QPushButton*>("OKButton")->click();
    EXPECT_EQ(dialog.clockTime()->text(), "0530");
    testing::Screenshot(dialog, "dlgTime");
    dialog.findChild<QPushButton*>("OKButton")->click();  // both filled: nothing changes
    EXPECT_EQ(dialog.simulatorTime()->text(), "19800");
    dialog.findChild<QPushButton*>("Command1")->click();
    EXPECT_EQ(dialog.simulatorTime()->text(), "");
    EXPECT_EQ(dialog.clockTime()->text(), "");
    dialog.clockTime()->setText("0530");
    dialog.convert();
    EXPECT_EQ(dialog.simulatorTime()->text(), "19800");
    dialog.clearBoxes();
    dialog.simulatorTime()->setText("3000");
    dialog.convert();
    EXPECT_EQ(dialog.clockTime()->text(), "0050");  // under an hour: "00" hours
}

TEST(dlgGUID, ShowsALowerCaseGuidAndANineDigitId) {
    dlgGUID dialog;
    EXPECT_EQ(dialog.windowTitle(), "Generate GUID");
    const std::string text = dialog.text()->toPlainText().toStdString();
    EXPECT_TRUE(std::regex_match(text, std::regex("[0-9a-f-]{36}\n[0-9]{9}"))) << text;
    EXPECT_EQ(dialog.findChild<QPushButton*>("Command1")->text(), "&Close");
    testing::Screenshot(dialog, "dlgGUID");
    dlgGUID another;
    EXPECT_NE(another.text()->toPlainText(), dialog.text()->toPlainText());
}

std::string Blueprint(const std::string& english) {
    std::string binary;
    EXPECT_FALSE(serz::XmlToBinary(
        "<cBlueprintLoader d:version=\"1.0\"><Blueprint><cWagonBlueprint>"
        "<English d:type=\"cDeltaString\">" + english + "</English>"
        "<Category d:type=\"cDeltaString\">eFreight</Category></cWagonBlueprint></Blueprint></cBlueprintLoader>",
        binary));
    return binary;
}

TEST(frmMain, ListsTheBlueprintsOfTheName) {
    testing::EditorFixture f;
    f.ctx.prefs.gameRoot = (f.root.path() / "RailWorks").string();
    f.root.write("RailWorks/Assets/Kuju/RailSimulator/RailVehicles/Wagons/Box.bin", Blueprint("Box Wagon"));
    f.root.write("RailWorks/Assets/Kuju/Other/Box.bin", Blueprint("Other box"));
    frmMain screen(f.ctx);
    screen.show();
    EXPECT_EQ(screen.windowTitle(), "Search For Assets Details");
    EXPECT_EQ(screen.findChild<QLineEdit*>("txtPath")->text().toStdString(), f.ctx.gameRoot() + "\\Assets");
    screen.asset()->setText("box.xml");
    screen.scanButton()->click();
    EXPECT_EQ(screen.asset()->text(), "box.bin");
    EXPECT_EQ(screen.scanButton()->text(), "Scan");
    ASSERT_EQ(screen.files()->topLevelItemCount(), 2);
    screen.files()->sortItems(1, Qt::AscendingOrder);
    const QTreeWidgetItem* row = screen.files()->topLevelItem(1);
    EXPECT_EQ(row->text(0), "Kuju");
    EXPECT_EQ(row->text(1), "RailSimulator");
    EXPECT_EQ(row->text(2), "RailVehicles\\Wagons\\Box.bin");
    EXPECT_EQ(row->text(3), "Box Wagon");
    EXPECT_EQ(row->text(4), "Freight");
    testing::Screenshot(screen, "frmMain");
    screen.findChild<QPushButton*>("Command2")->click();
    EXPECT_EQ(screen.files()->topLevelItemCount(), 0);
    EXPECT_EQ(screen.asset()->text(), "");
}

TEST(frmFolder5, ReplacesInTheSelectedFilesOnly) {
    testing::EditorFixture f;
    f.ctx.prefs.gameRoot = (f.root.path() / "RailWorks").string();
    const std::string wagon = Blueprint("Box Wagon");
    f.root.write("RailWorks/Content/a.bin", wagon);
    f.root.write("RailWorks/Content/b.bin", wagon);
    const fs::path c = f.root.write("RailWorks/Content/c.bin", wagon);
    const auto old = fs::file_time_type::clock::now() - std::chrono::hours(24);
    fs::last_write_time(c, old);
    frmFolder5 screen(f.ctx);
    screen.show();
    EXPECT_EQ(screen.windowTitle(), "Multi-file Search & Replace");
    EXPECT_TRUE(fs::exists(f.root.path() / "TempFiles"));
    screen.showFolder(f.ctx.gameRoot() + "\\Content");
    EXPECT_EQ(screen.findChild<QLabel*>("Label2")->text().toStdString(),
              "RailWorks\\Content");
    ASSERT_EQ(screen.files()->count(), 3);
    screen.files()->setCurrentRow(0);
    screen.display();
    EXPECT_TRUE(screen.pane()->toPlainText().contains("Box Wagon"));

    screen.files()->item(0)->setSelected(true);
    screen.files()->item(1)->setSelected(true);
    screen.files()->item(2)->setSelected(false);
    screen.boxes()->searchFor()->setText("Box Wagon");
    screen.boxes()->replaceWith()->setText("Open Wagon");
    screen.findChild<QPushButton*>("Command8")->click();
    EXPECT_EQ(screen.runLabel()->text(), "2 of 2 files changed");
    EXPECT_TRUE(fs::exists(f.root.path() / "RailWorks/Content/a.bin.bak"));
    EXPECT_TRUE(fs::exists(f.root.path() / "RailWorks/Content/b.bin.bak"));
    EXPECT_FALSE(fs::exists(f.root.path() / "RailWorks/Content/c.bin.bak"));
    EXPECT_EQ(fs::last_write_time(c), old);
    EXPECT_TRUE(screen.pane()->toPlainText().contains("Open Wagon"));
    screen.showFolder(f.ctx.gameRoot() + "\\Content");
    EXPECT_EQ(screen.files()->count(), 5);  // the back-ups are listed now
    testing::Screenshot(screen, "frmFolder5");

    // The pane's own search boxes.
    screen.boxes()->searchFor()->setText("open wagon");
    screen.findChild<QPushButton*>("Command4")->click();
    EXPECT_EQ(screen.pane()->textCursor().selectedText(), "Open Wagon");
    screen.findChild<QPushButton*>("Command10")->click();
    EXPECT_EQ(screen.selectedFiles().size(), 5u);
}

TEST(EditorToolCommands, StandInTheMenuAndOpenTheirScreens) {
    testing::EditorFixture f;
    QtUi qtUi;
    frmEditor window(f.ctx, qtUi);
    f.ctx.ui = &f.ui;
    for (const char* item : {"mnuFindMult", "mnuTime", "mnuUUID", "mnuIdent"}) {
        EXPECT_TRUE(window.menuAction(item)->isEnabled()) << item;
    }
    EXPECT_TRUE(window.runMenuCommand("mnuFind"));
    auto* search = window.findChild<dlgSearch*>("dlgSearch");
    ASSERT_NE(search, nullptr);
    EXPECT_TRUE(search->isVisible());
    window.closeSearchDialog();
    EXPECT_FALSE(search->isVisible());
    EXPECT_TRUE(window.runMenuCommand("mnuFindMult"));
    EXPECT_NE(window.findChild<frmFolder5*>("frmFolder5"), nullptr);
    EXPECT_TRUE(window.runMenuCommand("mnuIdent"));
    EXPECT_NE(window.findChild<frmMain*>("frmMain"), nullptr);
}

}  // namespace
}  // namespace ferrolund::screens
