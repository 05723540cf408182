#include <QAction>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <filesystem>
#include <gtest/gtest.h>

#include "screens/assets/asset_commands_fixture.h"
#include "screens/app/qt_text.h"
#include "screens/app/screen_fixture.h"
#include "screens/assets/asset_grid.h"
#include "screens/assets/frmAssets.h"
#include "screens/services/frmReport.h"
#include "serz/codec.h"
#include "tools/serz_convert.h"

namespace ferrolund::screens {
namespace {

namespace fs = std::filesystem;
using assets::testing::Child;

TEST(frmAssetsCommands, EveryEntryOfTheEditCheckCloneAndSoundMenusIsLive) {
    CommandsFixture f;
    frmAssets screen(f.ctx);
    for (const char* live : {"mnuChangeName", "mnuLod", "mnuAdd", "mnuDead", "mnuHead", "mnuCategory", "mnuCheckLoco",
                             "mnuShowFiles", "mnuWag", "mnuSFA", "mnuLoft", "mnuwhere", "mnuCloneAsset", "mnuCloneRS",
                             "mnuCloneScenery", "mnuReskinBP", "mnuProvider", "mnuNewWag"})
        EXPECT_TRUE(screen.action(live)->isEnabled()) << live;
}

TEST(frmAssetsCommands, ChangeNameRewritesTheBlueprintKeepsABackupAndTheCellFollows) {
    CommandsFixture f;
    Listed l(f);
    ASSERT_EQ(l.screen.grid()->grid().cell(0, 3), "Wagen");
    f.ui.answers.push_back(base::Answer::Ok);
    f.ui.inputs.push_back(std::string("# Bayern"));
    l.screen.action("mnuChangeName")->trigger();
    EXPECT_EQ(l.screen.grid()->grid().cell(0, 3), "Wagen Bayern");
    const fs::path folder = f.game.path() / "Assets/Müller/Straßenbahn/RailVehicles/Coach";
    EXPECT_TRUE(fs::exists(folder / "Wagen.bin.bak"));
    std::string xml;
    ASSERT_FALSE(tools::SerzReadXml(f.ctx, f.game.system() + "/Assets/Müller/Straßenbahn/RailVehicles/Coach/Wagen.bin", xml));
    EXPECT_NE(xml.find(">Wagen Bayern</English>"), std::string::npos);
    EXPECT_NE(f.reportText(l.screen).find("Requested changes have been made."), std::string::npos);
}

TEST(frmAssetsCommands, ChildEntriesAreListedForTheFirstRow) {
    CommandsFixture f;
    Listed l(f);
    l.screen.button("cmdChildren")->click();
    ASSERT_EQ(l.screen.childList()->count(), 2);
    EXPECT_EQ(l.screen.childList()->item(0)->text(), "Exhaust");
    EXPECT_TRUE(l.screen.childList()->isVisible() || !l.screen.isVisible());
    EXPECT_EQ(FromQt(l.screen.findChild<QLabel*>("lblChildren")->text()), "Child Entries For:- Wagen");
}

TEST(frmAssetsCommands, TheSmokeStackOfTheChosenChildIsStraightened) {
    CommandsFixture f;
    Listed l(f);
    l.screen.button("cmdChildren")->click();
    l.screen.childList()->item(0)->setSelected(true);
    f.ui.answers.push_back(base::Answer::Ok);
    l.screen.button("cmdSmoke")->click();
    std::string xml;
    ASSERT_FALSE(tools::SerzReadXml(f.ctx, f.game.system() + "/Assets/Müller/Straßenbahn/RailVehicles/Coach/Wagen.bin", xml));
    EXPECT_EQ(xml.find("0.866025"), std::string::npos) << "the tilt is gone";
    EXPECT_NE(xml.find("4.5"), std::string::npos) << "the position stays";
}

TEST(frmAssetsCommands, CheckLocoReportsTheMissingGeometry) {
    CommandsFixture f;
    Listed l(f);
    l.screen.action("mnuCheckLoco")->trigger();
    const std::string report = f.reportText(l.screen);
    EXPECT_NE(report.find("Checking: "), std::string::npos) << report;
    EXPECT_NE(report.find("wagen.GeoPcDx"), std::string::npos) << report;
}

TEST(frmAssetsCommands, ChecksWithNothingSelectedSaySo) {
    CommandsFixture f;
    frmAssets screen(f.ctx);
    screen.button("cmdAdd")->click();
    f.ui.shown.clear();
    screen.action("mnuCheckLoco")->trigger();
    ASSERT_FALSE(f.ui.shown.empty());
    EXPECT_EQ(f.ui.shown.back().text, f.ctx.langText(466));
}

TEST(frmAssetsCommands, SaveStockIndexAsksFirstAndWritesTheIndex) {
    CommandsFixture f;
    Listed l(f);
    f.ui.answers.push_back(base::Answer::No);
    l.screen.button("cmdIndex")->click();
    EXPECT_FALSE(fs::exists(f.root.path() / "IndexFiles/index.csv"));
    f.ui.answers.push_back(base::Answer::Yes);
    l.screen.button("cmdIndex")->click();
    const std::string index = f.root.read("IndexFiles/index.csv");
    EXPECT_EQ(index.rfind("Provider,Product,Path,Name,In Scene,Category,Blueprint,Index\r\n", 0), 0u);
    EXPECT_NE(index.find("Müller,Straßenbahn,RailVehicles\\Coach\\Wagen.bin,Wagen,"), std::string::npos);
}

TEST(frmAssetsCommands, TheMissingAssetFileBringsItsRowsAndTheirFiles) {
    CommandsFixture f;
    f.root.write("Reports/MissingAssets.csv",
                 f.game.system() + "\\Assets\\Müller\\Straßenbahn\\RailVehicles\\Coach\\Wagen.bin\r\n\r\n");
    frmAssets screen(f.ctx);
    ASSERT_FALSE(screen.button("cmdMissing")->isHidden());
    f.ui.answers.push_back(base::Answer::Yes);  // save the list as MissingFiles.txt
    screen.button("cmdMissing")->click();
    ASSERT_EQ(screen.grid()->grid().rowCount(), 1u);
    EXPECT_EQ(screen.selectedRows(), std::vector<std::size_t>{0});
    const std::string files = f.root.read("Reports/MissingFiles.txt");
    EXPECT_NE(files.find("Wagen.bin"), std::string::npos) << files;
    EXPECT_NE(files.find("+++"), std::string::npos);
}

}  // namespace
}  // namespace ferrolund::screens
