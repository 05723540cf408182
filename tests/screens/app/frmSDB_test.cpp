#include <QAction>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <gtest/gtest.h>

#include "app/startup.h"
#include "screen_fixture.h"
#include "screens/app/frmEditor.h"
#include "screens/app/frmSDB.h"
#include "screens/app/qt_ui.h"
#include "serz/codec.h"

namespace ferrolund::screens {
namespace {

namespace fs = std::filesystem;

TEST(frmSDB, DeleteAndRenameTakeTheCachesThatAreThere) {
    testing::ScreenFixture f;
    f.ctx.prefs.gameRoot = (f.root.path() / "game").string();
    f.root.write("game/Content/SDBCache.bin", "s");
    f.root.write("game/Content/SDBCache.bin.MD5", "m");
    int opened = 0;
    frmSDB dialog(f.ctx, [&] { ++opened; });
    testing::Screenshot(dialog, "frmSDB");
    EXPECT_EQ(dialog.windowTitle(), "SDBCache Options");
    dialog.findChild<QPushButton*>("Command2")->click();
    EXPECT_EQ(f.root.read("game/Content/SDBCache.bak"), "s");
    EXPECT_EQ(f.root.read("game/Content/SDBCache.bin.MD5.bak"), "m");
    f.root.write("game/Content/RVDBCache.bin", "r");
    dialog.findChild<QPushButton*>("Command1")->click();
    EXPECT_FALSE(fs::exists(f.root.path() / "game/Content/RVDBCache.bin"));
    dialog.findChild<QPushButton*>("Command3")->click();
    EXPECT_EQ(opened, 1);
    EXPECT_TRUE(f.ui.shown.empty());
}

TEST(frmSDB, OpensTheCacheInTheEditorWithoutADialog) {
    testing::ScreenFixture f;
    fs::create_directories(f.root.path() / "TempFiles");
    std::string bin;
    ASSERT_FALSE(serz::XmlToBinary("<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
                                   "<cRecordSet xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\" d:id=\"1\">\r\n"
                                   "\t<Record/>\r\n</cRecordSet>\r\n",
                                   bin));
    f.root.write("game/Content/SDBCache.bin", bin);
    f.ctx.prefs.gameRoot = (f.root.path() / "game").string();
    QtUi qtUi;
    frmEditor window(f.ctx, qtUi);
    window.show();
    // The dialog is modal: press its third button once it is up.
    QTimer::singleShot(0, [&] {
        auto* dialog = window.findChild<frmSDB*>();
        ASSERT_NE(dialog, nullptr);
        dialog->findChild<QPushButton*>("Command3")->click();
    });
    window.menuAction("mnuSDB")->trigger();
    EXPECT_TRUE(f.ui.dialogTitles.empty());
    EXPECT_TRUE(window.textPane()->toPlainText().contains("cRecordSet"));
    EXPECT_EQ(window.documentName(editor::Pane::Main), f.ctx.gameRoot() + "\\Content\\SDBCache.bin");
}

TEST(frmSDB, WindowsOnlyToolsSaySo) {
    testing::ScreenFixture f;
    QtUi qtUi;
    frmEditor window(f.ctx, qtUi);
    window.menuAction("mnuSP")->trigger();
    window.menuAction("mnuRSBT")->trigger();
    ASSERT_EQ(f.ui.shown.size(), 2u);
    EXPECT_NE(f.ui.shown[0].text.find("Windows"), std::string::npos);
    EXPECT_NE(f.ui.shown[1].text.find("cannot be run here"), std::string::npos);
}

TEST(frmEditorRoutes, IndexRoutePropertiesFromTheMenu) {
    testing::ScreenFixture f;
    f.root.write("game/Content/Routes/r1/RouteProperties.xml", "<English>Nordbahn</English>");
    f.ctx.prefs.gameRoot = (f.root.path() / "game").string();
    QtUi qtUi;
    frmEditor window(f.ctx, qtUi);
    ASSERT_TRUE(window.menuAction("mnuIRP")->isEnabled());
    window.menuAction("mnuIRP")->trigger();
    EXPECT_EQ(f.root.read("IndexFiles/RouteIndex.csv"), "Nordbahn,r1,0\r\n\r\n");
    EXPECT_TRUE(f.ctx.prefs.routesIndexed);
}

}  // namespace
}  // namespace ferrolund::screens
