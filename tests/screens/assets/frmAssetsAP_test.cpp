#include "screens/assets/frmAssetsAP.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <filesystem>
#include <gtest/gtest.h>

#include "core/archives/zip_fixture.h"
#include "core/assets/stock_fixture.h"
#include "screens/app/qt_text.h"
#include "screens/app/screen_fixture.h"
#include "screens/assets/asset_grid.h"
#include "serz/codec.h"

namespace ferrolund::screens {
namespace {

namespace fs = std::filesystem;

struct ApFixture : testing::ScreenFixture {
    testing::TempFolder game;
    ApFixture() {
        ctx.lang.parse(root.read("Language/Lang_English.txt"));
        ctx.prefs.gameRoot = game.system();
        std::string coach;
        EXPECT_FALSE(serz::XmlToBinary(assets::testing::CoachXml("Wagen, grün", {}, "x\\y"), coach));
        testing::MakeZip(game.path() / "Assets/Müller/Straßenbahn/Wagen.ap",
                         {{"RailVehicles/Coach/Wagen.bin", coach},
                          {"RailVehicles/Coach/wagen.GeoPcDx", "not read here"},
                          {"RailVehicles/Coach/Textures/wagen.TgPcDx", "texture"}});
        game.write("Assets/Müller/Straßenbahn/Broken.ap", "This is not a zip archive.");
        // The running numbers go on from the index.
        root.write("IndexFiles/index.csv", "Provider,Product,Path,Name,In Scene,Category,Blueprint,Index\r\n"
                                           "A,B,c.bin,C,Yes,Diesel,EngineBlueprint,41\r\n");
    }
};

std::vector<std::string> Items(QListWidget* list) {
    std::vector<std::string> items;
    for (int i = 0; i < list->count(); ++i) items.push_back(FromQt(list->item(i)->text()));
    return items;
}

TEST(frmAssetsAP, ArchivesEntriesAndTheirRows) {
    ApFixture f;
    frmAssetsAP screen(f.ctx);
    EXPECT_EQ(screen.windowTitle(), "Build List of Assets in .AP files");
    EXPECT_EQ(screen.entryFilterBox()->text(), "*.GeoPcDx");
    screen.button("cmdFind")->click();
    ASSERT_EQ(screen.archiveList()->count(), 2);

    const auto archives = Items(screen.archiveList());
    const int wagen = archives[0].find("Wagen.ap") != std::string::npos ? 0 : 1;
    screen.archiveList()->setCurrentRow(wagen);
    EXPECT_EQ(Items(screen.entryList()), std::vector<std::string>{"RailVehicles\\Coach\\wagen.GeoPcDx"});
    screen.entryFilterBox()->setText("*.bin");
    emit screen.entryFilterBox()->editingFinished();
    ASSERT_EQ(Items(screen.entryList()), std::vector<std::string>{"RailVehicles\\Coach\\Wagen.bin"});

    screen.entryList()->item(0)->setSelected(true);
    screen.button("cmdAdd")->click();
    ASSERT_EQ(screen.grid()->grid().rowCount(), 1u);
    const auto& row = screen.grid()->grid().rows()[0];
    EXPECT_EQ(row[0], "Müller");
    EXPECT_EQ(row[1], "Straßenbahn");
    EXPECT_EQ(row[2], "RailVehicles\\Coach\\Wagen.bin");
    EXPECT_EQ(row[3], "Wagen grün");
    EXPECT_EQ(row[7], "42");
    testing::Screenshot(screen, "frmAssetsAP");

    // The list joins the index, the old one kept.
    screen.button("cmdAppend")->click();
    const std::string index = f.root.read("IndexFiles/index.csv");
    EXPECT_NE(index.find("Müller,Straßenbahn,RailVehicles\\Coach\\Wagen.bin,Wagen grün"), std::string::npos) << index;
    EXPECT_TRUE(fs::exists(f.root.path() / "IndexFiles/index.csv.bak"));
}

TEST(frmAssetsAP, AnArchiveThatIsNoZipIsReportedAndListsNothing) {
    ApFixture f;
    frmAssetsAP screen(f.ctx);
    screen.button("cmdFind")->click();
    const auto archives = Items(screen.archiveList());
    const int broken = archives[0].find("Broken.ap") != std::string::npos ? 0 : 1;
    f.ui.shown.clear();
    screen.archiveList()->setCurrentRow(broken);
    EXPECT_EQ(screen.entryList()->count(), 0);
    EXPECT_FALSE(f.ui.shown.empty());
    EXPECT_TRUE(fs::exists(f.game.path() / "Assets/Müller/Straßenbahn/Broken.ap"));
}

TEST(frmAssetsAP, OpenInEditorNeedsAnArchiveAndHandsTheConvertedEntryOver) {
    ApFixture f;
    std::string opened;
    frmAssetsAP screen(f.ctx, [&opened](const std::string& file) { opened = file; });
    screen.button("cmdOpen")->click();
    EXPECT_NE(f.ui.texts().back().find("You must Open an Archive before you can"), std::string::npos);
    screen.button("cmdFind")->click();
    const auto archives = Items(screen.archiveList());
    screen.archiveList()->setCurrentRow(archives[0].find("Wagen.ap") != std::string::npos ? 0 : 1);
    screen.entryFilterBox()->setText("*.bin");
    emit screen.entryFilterBox()->editingFinished();
    screen.entryList()->setCurrentRow(0);
    screen.button("cmdOpen")->click();
    ASSERT_FALSE(opened.empty());
    EXPECT_NE(f.root.read("TempFiles/Wagen.xml").find("Wagen, grün"), std::string::npos);
}

}  // namespace
}  // namespace ferrolund::screens
