#include "screens/archives/frmNewZip.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QTableWidget>
#include <gtest/gtest.h>

#include <filesystem>

#include "screens/app/screen_fixture.h"

namespace ferrolund::screens {
namespace {

namespace fs = std::filesystem;

struct ZipScreen : testing::ScreenFixture {
    ZipScreen() {
        root.write("MyRoute/InstallMe.bat", "xcopy");
        root.write("MyRoute/Content/Routes/r1/RouteProperties.xml", "<English>R</English>");
    }
};

TEST(frmNewZip, PackagingAsksFirstAndCancelLeavesTheScreenEmpty) {
    ZipScreen f;
    frmNewZip screen(f.ctx, "MyRoute");
    f.ui.answers = {base::Answer::Cancel};
    EXPECT_FALSE(screen.startPackaging());
    EXPECT_EQ(f.ui.texts(), std::vector<std::string>{"Click OK to start processing zip file (may take a little time)"});
    EXPECT_EQ(screen.list()->rowCount(), 0);
    EXPECT_FALSE(fs::exists(f.root.path() / "MyRoute.zip"));
}

TEST(frmNewZip, PackagingZipsThePackageFolderAndListsIt) {
    ZipScreen f;
    frmNewZip screen(f.ctx, "MyRoute");
    f.ui.answers = {base::Answer::Ok};
    ASSERT_TRUE(screen.startPackaging());
    EXPECT_TRUE(fs::exists(f.root.path() / "MyRoute.zip"));
    ASSERT_EQ(screen.list()->rowCount(), 2);
    EXPECT_EQ(screen.list()->item(0, 1)->text(), "Content\\Routes\\r1\\RouteProperties.xml");
    EXPECT_EQ(screen.list()->item(1, 1)->text(), "InstallMe.bat");
    EXPECT_EQ(screen.list()->item(1, 3)->text(), "5");
    EXPECT_EQ(screen.list()->horizontalHeaderItem(4)->text(), "Modification Date");
    screen.resize(820, 480);
    testing::Screenshot(screen, "frmNewZip_packaging");
}

TEST(frmNewZip, TheSliderSetsTheLevelAndTheCommandsNeedAnArchive) {
    ZipScreen f;
    frmNewZip screen(f.ctx);
    EXPECT_EQ(screen.findChild<QLabel*>("SB1")->text(), "Compression Level = 6");
    screen.findChild<QSlider*>("Slider1")->setValue(9);
    EXPECT_EQ(screen.manager().compressionLevel, 9);
    EXPECT_EQ(screen.findChild<QLabel*>("SB1")->text(), "Compression Level = 9");
    screen.action("mnuAdd")->trigger();
    screen.action("mnuExtSel")->trigger();
    EXPECT_EQ(f.ui.texts(),
              (std::vector<std::string>{"You must Open an Archive before you can\r\n            Add anything to it!",
                                        "You must Open an Archive before you can\r\n            Extract anything from it!"}));
    EXPECT_TRUE(f.ui.dialogTitles.empty());
}

TEST(frmNewZip, ProcessNamesTheZipAndAddFolderTakesThePattern) {
    ZipScreen f;
    frmNewZip screen(f.ctx, "MyRoute");
    screen.findChild<QPushButton*>("Command2")->click();  // no save name: nothing
    EXPECT_FALSE(screen.manager().isOpen());
    f.ui.files = {f.root.system() + "\\Out.zip"};
    screen.findChild<QPushButton*>("Command2")->click();
    EXPECT_EQ(screen.findChild<QLabel*>("Label4")->text().toStdString(),
              "Zip File name:  " + f.root.system() + "\\Out.zip");
    EXPECT_EQ(screen.list()->rowCount(), 2);
    screen.findChild<QLineEdit*>("Text1")->setText("*.bat");
    f.ui.folders = {f.root.system() + "\\MyRoute"};
    f.root.write("MyRoute/second.bat", "x");
    screen.action("mnuAddFold")->trigger();
    EXPECT_EQ(screen.list()->rowCount(), 3);
    EXPECT_TRUE(f.ui.shown.empty());
}

}  // namespace
}  // namespace ferrolund::screens
