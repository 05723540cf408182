#include "screens/routes/maintenance_commands.h"

#include <QAction>
#include <QApplication>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <gtest/gtest.h>

#include <filesystem>

#include "route_screen_fixture.h"
#include "screens/app/qt_text.h"
#include "screens/routes/frmDelRoute.h"
#include "screens/routes/frmMix.h"
#include "tools/serz_convert.h"

namespace ferrolund::screens {
namespace {

namespace fs = std::filesystem;

constexpr const char* kRoute = "aaaa-route";

// A MixMap tile as the converter writes it: 128 by 128 points of six bytes, one painted.
std::string MixMapXml() {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<cRecordSet xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" "
           "d:version=\"1.0\" d:id=\"1\">\r\n<Record>\r\n<cMixMap d:id=\"2\">\r\n<TileX d:type=\"sInt32\">0</TileX>\r\n"
           "<d:blob d:size=\"98304\">067C" +
           std::string(98304 * 2 - 4, '0') + "</d:blob>\r\n</cMixMap>\r\n</Record>\r\n</cRecordSet>\r\n";
}

struct Maintenance : testing::RouteScreenFixture {
    frmDelRoute screen{ctx};
    Maintenance() {
        writeIndex(std::string("Zeta Line,") + kRoute + ",1");
        EXPECT_TRUE(screen.loadRoutes());
        fs::create_directories(root.path() / "Templates");
        fs::copy_file(fs::path(FERROLUND_SOURCE_DIR) / "data" / "Templates" / "BlankTerrain.txt",
                      root.path() / "Templates" / "BlankTerrain.txt");
        ui.shown.clear();
    }
    QAction* misc(const char* name) { return screen.findChild<QAction*>(name); }
    bool mixTile(const std::string& name) {
        const fs::path source = root.write("mix-source.xml", MixMapXml());
        game.write("Content/Routes/" + std::string(kRoute) + "/MixMap/" + name, "");
        return !tools::SerzConvert(ctx, source.string(),
                                   game.system() + "\\Content\\Routes\\" + kRoute + "\\MixMap\\" + name,
                                   tools::SerzDirection::ToBinary);
    }
    frmMix* openMix() {
        ui.answers = {base::Answer::Yes};
        misc("mnuTex")->trigger();
        return screen.findChild<frmMix*>();
    }
};

TEST(MaintenanceCommands, ButtonsAndMenuEntriesWithTheirCaptions) {
    Maintenance f;
    ASSERT_NE(f.screen.button("Command18"), nullptr);
    ASSERT_NE(f.screen.button("Command25"), nullptr);
    EXPECT_EQ(f.screen.button("Command18")->text(), "Check ScenarioProperties");
    EXPECT_EQ(f.screen.button("Command25")->text(), "Check Route Template");
    ASSERT_NE(f.misc("mnuTex"), nullptr);
    ASSERT_NE(f.misc("mnuCRF"), nullptr);
    EXPECT_EQ(f.misc("mnuTex")->text(), "Remove terrain textures");
    EXPECT_EQ(f.misc("mnuCRF")->text(), "Make Asset Folder");
}

TEST(MaintenanceCommands, CheckScenarioPropertiesNeedsSelectedScenarios) {
    Maintenance f;
    f.scenario(kRoute, "s1", "Early turn", "");
    f.screen.button("Command18")->click();
    EXPECT_EQ(f.ui.texts(), std::vector<std::string>{"You do not appear to have selected a scenario?"});

    f.screen.listScenarios();
    f.screen.scenarios()->selectRow(0);
    f.ui.shown.clear();
    f.screen.button("Command18")->click();
    // The fixture's scenario file is no text the converter takes: a format error, with its reason.
    const auto texts = f.ui.texts();
    ASSERT_EQ(texts.size(), 2u);
    EXPECT_TRUE(texts[0].starts_with("If you saw a message regarding Line 113, there is a format\nerror in Early "
                                     "turn\n\n"));
    EXPECT_NE(texts[0].find("ScenarioProperties.xml: line "), std::string::npos);
    EXPECT_EQ(texts[1], "All selected ScenarioProperties.xml checked - at least one had a format error.");
    EXPECT_FALSE(f.screen.running());
}

TEST(MaintenanceCommands, CheckRouteTemplateOfTheSelectedRoute) {
    Maintenance f;
    f.screen.button("Command25")->click();
    EXPECT_EQ(f.ui.texts(), std::vector<std::string>{"There is no RouteProperties.xml file for this route\ntherefore "
                                                     "the route is invalid and can't be used."});
    f.screen.routes()->clearSelection();
    f.ui.shown.clear();
    f.screen.button("Command25")->click();
    EXPECT_EQ(f.ui.texts(), std::vector<std::string>{"You do not appear to have selected a route?"});
}

TEST(MaintenanceCommands, RemoveTerrainTexturesAsksThenOpensTheMixMapList) {
    Maintenance f;
    // No MixMap folder: said, nothing opened.
    EXPECT_EQ(f.openMix(), nullptr);
    ASSERT_EQ(f.ui.texts().size(), 2u);
    EXPECT_EQ(f.ui.texts()[0], "Do you really wish to remove terrain textures?");
    EXPECT_TRUE(f.ui.texts()[1].starts_with("The route has no MixMap folder:\n"));

    ASSERT_TRUE(f.mixTile("+000000+000000.bin"));
    f.ui.shown.clear();
    f.ui.answers = {base::Answer::No};
    f.misc("mnuTex")->trigger();
    EXPECT_EQ(f.screen.findChild<frmMix*>(), nullptr);

    frmMix* mix = f.openMix();
    ASSERT_NE(mix, nullptr);
    EXPECT_EQ(mix->windowTitle(), "Clear MixMap Files");
    ASSERT_EQ(mix->files()->count(), 1);
    EXPECT_EQ(mix->files()->item(0)->text(), "+000000+000000.bin");
    mix->close();
}

TEST(MaintenanceCommands, ClearMixMapFilesSelectAllThenProcess) {
    Maintenance f;
    ASSERT_TRUE(f.mixTile("+000000+000000.bin"));
    ASSERT_TRUE(f.mixTile("-000001+000000.bin"));
    f.game.write(std::string("Content/Routes/") + kRoute + "/MixMap/readme.txt", "notes");
    frmMix* mix = f.openMix();
    ASSERT_NE(mix, nullptr);
    mix->resize(420, 360);
    QPushButton* process = mix->findChild<QPushButton*>("Command2");
    ASSERT_NE(process, nullptr);
    EXPECT_EQ(process->text(), "Process");

    f.ui.shown.clear();
    process->click();
    EXPECT_EQ(f.ui.texts(), std::vector<std::string>{
                                "No file is marked: mark the MixMap files to clear, or click \"Select All\"."});

    mix->findChild<QPushButton*>("Command1")->click();
    EXPECT_EQ(mix->markedFiles(), (std::vector<std::string>{"+000000+000000.bin", "-000001+000000.bin", "readme.txt"}));
    mix->files()->item(1)->setCheckState(Qt::Unchecked);
    testing::Screenshot(*mix, "frmMix");
    f.ui.shown.clear();
    process->click();
    EXPECT_EQ(f.ui.texts(), std::vector<std::string>{"All selected files have been modified."});
    EXPECT_EQ(mix->lastRun().modified, std::vector<std::string>{"+000000+000000.bin"});
    EXPECT_FALSE(f.screen.running());

    // The list is read again: the back-up stands beside the new file, none marked.
    std::vector<std::string> listed;
    for (int i = 0; i < mix->files()->count(); ++i) {
        listed.push_back(FromQt(mix->files()->item(i)->text()));
        EXPECT_EQ(mix->files()->item(i)->checkState(), Qt::Unchecked);
    }
    EXPECT_EQ(listed, (std::vector<std::string>{"+000000+000000.bin", "+000000+000000.bin.bak", "-000001+000000.bin",
                                                "readme.txt"}));
    std::string xml;
    ASSERT_FALSE(tools::SerzReadXml(
        f.ctx, f.game.system() + "\\Content\\Routes\\" + kRoute + "\\MixMap\\+000000+000000.bin", xml));
    EXPECT_NE(xml.find("<d:blob d:size=\"98304\">0000000000000000"), std::string::npos);
    mix->close();
}

TEST(MaintenanceCommands, MakeAssetFolderCopiesTheSavedListsAssetsForTheSelectedRoute) {
    Maintenance f;
    f.asset("Kestrel/Moorland/Scenery/Oak.bin");
    f.root.write("Reports/Zeta Line_Assets.csv",
                 f.game.system() + "\\Assets\\Kestrel\\Moorland\\Scenery\\Oak.bin,(Scenery Item)\r\n");
    f.ui.answers = {base::Answer::Ok};
    f.misc("mnuCRF")->trigger();
    EXPECT_EQ(f.root.read("Zeta Line/Kestrel/Moorland/Scenery/Oak.bin"), "bin");
    ASSERT_EQ(f.ui.texts().size(), 2u);
    EXPECT_TRUE(f.ui.texts()[1].starts_with("The assets used by Zeta Line have been copied into\n"));
    EXPECT_FALSE(f.ui.progressSteps.empty());
    EXPECT_FALSE(f.screen.running());
}

TEST(MaintenanceCommands, MakeAssetFolderCancelledChangesNothing) {
    Maintenance f;
    f.ui.answers = {base::Answer::Cancel};
    f.misc("mnuCRF")->trigger();
    ASSERT_EQ(f.ui.texts().size(), 1u);
    EXPECT_TRUE(f.ui.shown[0].question);
    EXPECT_FALSE(fs::exists(f.root.path() / "Zeta Line"));
    EXPECT_FALSE(f.screen.running());
}

}  // namespace
}  // namespace ferrolund::screens
