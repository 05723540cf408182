#include "screens/routes/asset_commands.h"

#include <QHeaderView>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>
#include <gtest/gtest.h>

#include <filesystem>

#include "route_screen_fixture.h"
#include "screens/app/qt_text.h"
#include "screens/archives/frmListRS.h"
#include "screens/routes/frmDelRoute.h"

namespace ferrolund::screens {
namespace {

namespace fs = std::filesystem;
constexpr const char* kRoute = "aaaa-route";

struct AssetScreen : testing::RouteScreenFixture {
    AssetScreen() {
        writeIndex(std::string("Zeta Line,") + kRoute + ",1");
        game.write(std::string("Content/Routes/") + kRoute + "/RouteProperties.xml",
                   "<cRouteProperties>\r\n<RBlueprintSetPreLoad>\r\n<iBlueprintLibrary-cBlueprintSetID>\r\n"
                   "<Provider d:type=\"cDeltaString\">Kuju</Provider>\r\n<Product d:type=\"cDeltaString\">RailSimulator"
                   "</Product>\r\n</iBlueprintLibrary-cBlueprintSetID>\r\n<iBlueprintLibrary-cBlueprintSetID>\r\n"
                   "<Provider d:type=\"cDeltaString\">Hartwell</Provider>\r\n<Product d:type=\"cDeltaString\">"
                   "SteamHeritage</Product>\r\n</iBlueprintLibrary-cBlueprintSetID>\r\n</RBlueprintSetPreLoad>\r\n"
                   "</cRouteProperties>\r\n");
    }
    std::string cell(QTableWidget* grid, int row, int column) const {
        const QTableWidgetItem* item = grid->item(row, column);
        return item ? FromQt(item->text()) : std::string("<none>");
    }
    std::vector<frmListRS*> grids(frmDelRoute& screen) const {
        std::vector<frmListRS*> found;
        for (frmListRS* g : screen.findChildren<frmListRS*>()) found.push_back(g);
        return found;
    }
    std::string notes(frmDelRoute& screen) const {
        return FromQt(screen.findChild<QPlainTextEdit*>("Text1")->toPlainText());
    }
};

TEST(AssetCommands, CaptionsAndTheGreyedCommands) {
    AssetScreen f;
    frmDelRoute screen(f.ctx);
    const std::pair<const char*, const char*> captions[] = {
        {"Command17", "Show Location of all Assets"},
        {"Command14", "Show Provider / Products used in selected route"},
        {"Command22", "Display items used from selected P/P"},
        {"Command23", "Display items NOT used"},
    };
    for (const auto& [name, caption] : captions) {
        ASSERT_NE(screen.button(name), nullptr) << name;
        EXPECT_EQ(FromQt(screen.button(name)->text()), caption);
    }
    EXPECT_TRUE(screen.button("Command17")->isEnabled());
    EXPECT_TRUE(screen.button("Command14")->isEnabled());
    EXPECT_FALSE(screen.button("Command22")->isEnabled());
    EXPECT_FALSE(screen.button("Command23")->isEnabled());
}

TEST(AssetCommands, LocationsOnTheGridAndTheMissingInTheNotes) {
    AssetScreen f;
    f.asset("Hartwell/SteamHeritage/Trees/Oak.bin");
    ASSERT_TRUE(f.tile(std::string("Content/Routes/") + kRoute + "/Scenery/+000001-000002.bin",
                       {{"Hartwell", "SteamHeritage", "Trees\\Oak.xml"}, {"Hartwell", "SteamHeritage", "Gone.xml"}}));
    frmDelRoute screen(f.ctx);
    ASSERT_TRUE(screen.loadRoutes());
    screen.button("Command17")->click();
    const auto shown = f.grids(screen);
    ASSERT_EQ(shown.size(), 1u);
    archives::ReportGrid& grid = shown[0]->grid();
    EXPECT_EQ(grid.mode, archives::kModeLocations);
    EXPECT_EQ(grid.heading, "Following item(s) were used by  Zeta Line:-");
    ASSERT_EQ(grid.rowCount(), 2u);
    const std::string assets = f.game.system() + "\\Assets\\Hartwell\\SteamHeritage\\";
    EXPECT_EQ(grid.cell(0, 0), assets + "Gone.bin");
    EXPECT_EQ(grid.cell(1, 0), assets + "Trees\\Oak.bin");
    EXPECT_EQ(grid.cell(1, 1), "(Scenery Item) on tile +000001-000002");
    EXPECT_EQ(f.notes(screen), "Following Asset(s) were missing from Zeta Line:-\n" + assets +
                                   "Gone.bin (Scenery Item) on tile +000001-000002");
    EXPECT_TRUE(f.ui.shown.empty());
    testing::Screenshot(*shown[0], "asset_locations_grid");
}

TEST(AssetCommands, LocationsOfAPackedRouteSaySoAndShowNoGrid) {
    AssetScreen f;
    frmDelRoute screen(f.ctx);
    ASSERT_TRUE(screen.loadRoutes());
    screen.button("Command17")->click();
    EXPECT_TRUE(f.grids(screen).empty());
    EXPECT_EQ(f.ui.texts(), std::vector<std::string>{"There is no 'Scenery' folder for this Zeta Line, must assume\nit "
                                                     "is held in an .ap folder and can't be checked here."});
}

TEST(AssetCommands, ProvidersThenTheItemsOfOneThenTheUnusedFiles) {
    AssetScreen f;
    f.asset("Hartwell/SteamHeritage/Trees/Oak.bin");
    f.asset("Hartwell/SteamHeritage/Trees/Ash.bin");
    ASSERT_TRUE(f.tile(std::string("Content/Routes/") + kRoute + "/Scenery/+000000+000000.bin",
                       {{"hartwell", "steamheritage", "Trees\\Oak.xml"}, {"Kuju", "RailSimulator", "Other.xml"}}));
    frmDelRoute screen(f.ctx);
    ASSERT_TRUE(screen.loadRoutes());

    screen.button("Command14")->click();
    QTableWidget* lower = screen.scenarios();
    ASSERT_EQ(lower->rowCount(), 2);
    EXPECT_EQ(f.cell(lower, 0, 0), "Hartwell");
    EXPECT_EQ(f.cell(lower, 0, 1), "SteamHeritage");
    EXPECT_EQ(f.cell(lower, 1, 0), "Kuju");
    EXPECT_EQ(lower->horizontalHeaderItem(0)->text(), "Provider");
    EXPECT_EQ(lower->horizontalHeaderItem(1)->text(), "Product");
    EXPECT_TRUE(screen.button("Command22")->isEnabled());
    EXPECT_FALSE(screen.button("Command23")->isEnabled());
    testing::Screenshot(screen, "asset_commands_providers");

    screen.button("Command22")->click();  // no row chosen
    EXPECT_EQ(f.ui.texts(), std::vector<std::string>{"You do not appear to have selected any valid items in the list below."});
    EXPECT_TRUE(f.grids(screen).empty());

    f.ui.shown.clear();
    lower->selectRow(0);
    screen.button("Command22")->click();
    auto shown = f.grids(screen);
    ASSERT_GE(shown.size(), 1u);
    EXPECT_EQ(shown[0]->grid().mode, 12);
    EXPECT_EQ(shown[0]->grid().heading, "Items Used by Provider");
    ASSERT_EQ(shown[0]->grid().rowCount(), 1u);
    EXPECT_EQ(shown[0]->grid().cell(0, 0), f.game.system() + "\\Assets\\hartwell\\steamheritage\\Trees\\Oak.bin");
    EXPECT_TRUE(screen.button("Command23")->isEnabled());
    // No geometry: the message, and the question about the texture list answered No.
    EXPECT_EQ(f.ui.texts(), (std::vector<std::string>{
                                "No texture files found, assume there are no\nScenery files from this Provider.",
                                "Do you wish to view a list of Textures used by this route?"}));

    f.ui.shown.clear();
    f.ui.answers = {base::Answer::Yes};
    screen.button("Command23")->click();
    shown = f.grids(screen);
    frmListRS* unused = shown.back();
    EXPECT_TRUE(unused->grid().saveAsBatch);
    ASSERT_EQ(unused->grid().rowCount(), 1u);
    EXPECT_EQ(unused->grid().cell(0, 0),
              "DEL " + f.game.system() + "\\Assets\\Hartwell\\SteamHeritage\\Trees\\Ash.bin");
    ASSERT_EQ(f.ui.shown.size(), 1u);
    EXPECT_TRUE(f.ui.shown[0].question);
}

TEST(AssetCommands, AnotherListInTheLowerGridGreysTheItemsCommandAgain) {
    AssetScreen f;
    frmDelRoute screen(f.ctx);
    ASSERT_TRUE(screen.loadRoutes());
    screen.button("Command14")->click();
    ASSERT_TRUE(screen.button("Command22")->isEnabled());
    screen.button("Command1")->click();  // the scenarios of the route replace the providers
    EXPECT_FALSE(screen.button("Command22")->isEnabled());
    EXPECT_EQ(screen.scenarios()->horizontalHeaderItem(0)->text(), "Scenario Name");
    EXPECT_EQ(screen.scenarios()->horizontalHeaderItem(1)->text(), "Scenario ID (GUID)");
}

TEST(AssetCommands, ProvidersOfARouteWithoutRoutePropertiesLeaveTheLowerGrid) {
    AssetScreen f;
    f.scenario(kRoute, "s1", "Morning run", "");
    fs::remove(f.game.path() / "Content/Routes" / kRoute / "RouteProperties.xml");
    frmDelRoute screen(f.ctx);
    ASSERT_TRUE(screen.loadRoutes());
    screen.button("Command1")->click();
    screen.button("Command14")->click();
    EXPECT_EQ(f.ui.texts(), std::vector<std::string>{"There is no RouteProperties.xml file for this route\ntherefore "
                                                     "the route is invalid and can't be used."});
    ASSERT_EQ(screen.scenarios()->rowCount(), 1);
    EXPECT_EQ(f.cell(screen.scenarios(), 0, 0), "Morning run");
    EXPECT_FALSE(screen.button("Command22")->isEnabled());
}

TEST(AssetCommands, WithoutARouteSelectedTheCommandsSaySo) {
    AssetScreen f;
    frmDelRoute screen(f.ctx);
    ASSERT_TRUE(screen.loadRoutes());
    screen.routes()->clearSelection();
    screen.button("Command17")->click();
    screen.button("Command14")->click();
    EXPECT_EQ(f.ui.texts(), (std::vector<std::string>{"You do not appear to have selected a route?",
                                                      "You do not appear to have selected a route?"}));
    EXPECT_FALSE(screen.button("Command22")->isEnabled());
}

}  // namespace
}  // namespace ferrolund::screens
