#include "screens/archives/folder_screens.h"

#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <gtest/gtest.h>

#include <filesystem>

#include "screens/app/screen_fixture.h"

namespace ferrolund::screens {
namespace {

namespace fs = std::filesystem;

struct TempScreen : testing::ScreenFixture {
    TempScreen() {
        ctx.prefs.gameRoot = root.system() + "\\RW";
        root.write("RW/Temp/a.tmp", "a");
        root.write("RW/Temp/cache/b.tmp", "b");
        root.write("RW/Temp/c.tmp", "c");
        root.write("RW/Assets/keep.bin", "k");
    }
    static QStringList items(frmFolder6& screen) {
        QStringList names;
        for (int i = 0; i < screen.files()->count(); ++i) names << screen.files()->item(i)->text();
        return names;
    }
};

TEST(frmFolder6, ListsTheTempFilesAndDeletesTheSelectedOnes) {
    TempScreen f;
    frmFolder6 screen(f.ctx);
    EXPECT_EQ(screen.windowTitle(), "Select Temp Folder");
    EXPECT_EQ(TempScreen::items(screen), (QStringList{"a.tmp", "c.tmp", "cache\\b.tmp"}));
    screen.resize(520, 360);
    testing::Screenshot(screen, "frmFolder6");
    screen.files()->item(0)->setSelected(true);
    screen.files()->item(2)->setSelected(true);
    screen.findChild<QPushButton*>("Command1")->click();
    EXPECT_EQ(TempScreen::items(screen), QStringList{"c.tmp"});
    EXPECT_FALSE(fs::exists(f.root.path() / "RW/Temp/a.tmp"));
    EXPECT_TRUE(fs::is_directory(f.root.path() / "RW/Temp/cache"));
    EXPECT_TRUE(f.ui.shown.empty());
}

TEST(frmFolder6, DeleteAllLeavesAnEmptyTempAndTheRestUntouched) {
    TempScreen f;
    frmFolder6 screen(f.ctx);
    screen.findChild<QPushButton*>("Command2")->click();
    EXPECT_EQ(screen.files()->count(), 0);
    EXPECT_TRUE(fs::is_directory(f.root.path() / "RW/Temp"));
    EXPECT_TRUE(fs::is_empty(f.root.path() / "RW/Temp"));
    EXPECT_EQ(f.root.read("RW/Assets/keep.bin"), "k");
}

TEST(frmFolder6, WithoutASimulatorFolderNothingIsListedOrDeleted) {
    TempScreen f;
    f.ctx.prefs.gameRoot.clear();
    frmFolder6 screen(f.ctx);
    EXPECT_EQ(screen.files()->count(), 0);
    screen.findChild<QPushButton*>("Command2")->click();
    EXPECT_TRUE(fs::exists(f.root.path() / "RW/Temp/a.tmp"));
}

TEST(frmFolder2, ConfirmMakesTheNewFolderOrAsksAboutAnOldOne) {
    TempScreen f;
    frmFolder2 screen(f.ctx, f.root.system(), true, nullptr);
    EXPECT_EQ(screen.windowTitle(), "Save Unpacked Files in:-");
    screen.newFolderBox()->setText("Unpacked");
    screen.resize(520, 160);
    testing::Screenshot(screen, "frmFolder2");
    screen.findChild<QPushButton*>("Command1")->click();
    ASSERT_TRUE(screen.result());
    EXPECT_EQ(*screen.result(), f.root.system() + "\\Unpacked");
    EXPECT_TRUE(fs::is_directory(f.root.path() / "Unpacked"));

    frmFolder2 again(f.ctx, f.root.system(), true, nullptr);
    again.newFolderBox()->setText("Unpacked");
    f.ui.answers = {base::Answer::No};
    again.findChild<QPushButton*>("Command1")->click();
    EXPECT_FALSE(again.result());
    EXPECT_EQ(f.ui.texts().back(), "A folder with that name already exists. Do you wish to proceed?");
}

TEST(frmFolder2, BrowseFillsTheFolderAndWithoutANewFolderTheBoxIsHidden) {
    TempScreen f;
    frmFolder2 screen(f.ctx, {}, false, nullptr);
    EXPECT_TRUE(screen.newFolderBox()->isHidden());
    f.ui.folders = {f.root.system() + "\\RW"};
    screen.findChild<QPushButton*>("cmdBrowse")->click();
    EXPECT_EQ(screen.folderBox()->text().toStdString(), f.root.system() + "\\RW");
    f.ui.answers = {base::Answer::Yes};
    screen.findChild<QPushButton*>("Command1")->click();
    EXPECT_EQ(screen.result(), std::optional<std::string>(f.root.system() + "\\RW"));
}

}  // namespace
}  // namespace ferrolund::screens
