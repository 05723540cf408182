// The report grid's commands on the route its list came from, and the batch save.

#include <QPushButton>
#include <QTableView>
#include <filesystem>
#include <gtest/gtest.h>

#include "screens/archives/frmListRS.h"
#include "screens/routes/route_screen_fixture.h"
#include "tools/text_search.h"

namespace ferrolund::screens {
namespace {

namespace fs = std::filesystem;

constexpr const char* kRoute = "7c2d9e41-0b5a-4f3e-a1d8-6e9f2b7c4a05";

struct GridRoute : testing::RouteScreenFixture {
    GridRoute() {
        EXPECT_TRUE(tile(std::string("Content/Routes/") + kRoute + "/Scenery/+000000+000000.bin",
                         {{"Kuju", "RailSimulator", "Trees\\Oak.xml"}, {"Kuju", "RailSimulator", "Trees\\Ash.xml"}}));
        game.write(std::string("Content/Routes/") + kRoute + "/RouteProperties.xml",
                   "<cRouteProperties d:id=\"5\">\r\n\t<RBlueprintSetPreLoad>\r\n\t</RBlueprintSetPreLoad>\r\n"
                   "</cRouteProperties>\r\n");
        fs::copy(fs::path(FERROLUND_SOURCE_DIR) / "data" / "Templates", root.path() / "Templates");
    }
    archives::ReportGrid grid(int mode, bool withRoute = true) const {
        archives::ReportGrid g;
        g.mode = mode;
        if (withRoute) {
            g.routeName = "Ostvale Valley";
            g.routeFolder = kRoute;
        }
        g.takeList(game.system() + "\\Assets\\Kuju\\RailSimulator\\Trees\\Oak.bin\t(Scenery Item)\r\n" +
                   game.system() + "\\Assets\\Kuju\\RailSimulator\\Trees\\oak.bin\t(Scenery Item)\r\n");
        return g;
    }
    std::string tileXml() {
        std::string xml;
        EXPECT_FALSE(tools::SerzReadXml(ctx, game.system() + "\\Content\\Routes\\" + kRoute + "\\Scenery\\+000000+000000.bin", xml));
        return xml;
    }
};

TEST(frmListRSRoute, TheRouteCommandsAreLiveWhereTheyMakeSense) {
    GridRoute f;
    const struct {
        int mode;
        bool route;
        bool substitute, remove, fix;
    } cases[] = {
        {archives::kModeRouteItems, true, true, true, true},  {archives::kModeRouteCheck, true, true, true, false},
        {archives::kModeRemovals, true, false, true, true},   {archives::kModeScenarioStock, true, false, false, false},
        {7, true, false, false, false},
        {archives::kModeRouteItems, false, false, false, false}, {archives::kModeApList, false, false, false, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.mode);
        frmListRS screen(f.ctx, f.grid(c.mode, c.route));
        EXPECT_EQ(screen.button("Command6")->isEnabled(), c.substitute);
        EXPECT_EQ(screen.button("Command8")->isEnabled(), c.remove);
        EXPECT_EQ(screen.button("Command23")->isEnabled(), c.remove);
        EXPECT_EQ(screen.button("Command11")->isEnabled(), c.fix);
    }
    frmListRS screen(f.ctx, f.grid(archives::kModeRouteItems));
    EXPECT_EQ(screen.button("Command6")->text(), "Substitute existing scenery item");
    frmListRS numbers(f.ctx, f.grid(7));  // wagon numbers: no blueprint to check
    for (const char* name : {"Command1", "Command3", "Command5"}) EXPECT_TRUE(numbers.button(name)->isHidden()) << name;
}

TEST(frmListRSRoute, SubstitutesTheSelectedItemAfterTheDuplicatesAreGone) {
    GridRoute f;
    frmListRS screen(f.ctx, f.grid(archives::kModeRouteItems));
    screen.resize(1000, 500);
    int asked = 0;
    screen.setSubstituteDialog([&](const routes::GridItem& old) {
        ++asked;
        // While the command runs its siblings are locked and "&Abort" is at hand.
        EXPECT_FALSE(screen.button("Command8")->isEnabled());
        EXPECT_FALSE(screen.findChild<QPushButton*>("Command10")->isHidden());
        EXPECT_EQ(old.ref.blueprintId, "Trees\\Oak.xml");
        return routes::SubstituteChoice{{"Brackenridge", "CountryScenery", "Trees\\Elm.xml"}, routes::kSceneryKind};
    });
    screen.list()->selectRow(0);
    screen.button("Command6")->click();
    EXPECT_EQ(f.ui.texts().back(), "You must click the 'Remove Duplicates' button\nbefore using this option.");
    screen.button("Command1")->click();
    screen.button("Command6")->click();
    EXPECT_EQ(f.ui.texts().back(), "You do not appear to have selected an item to substitute?");
    screen.list()->selectRow(0);
    screen.button("Command6")->click();
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(f.ui.texts().back(), "The requested changes have been made.");
    const std::string xml = f.tileXml();
    EXPECT_EQ(tools::InStr(xml, "Oak.xml"), 0);
    EXPECT_GT(tools::InStr(xml, ">Trees\\Elm.xml<"), 0);
    EXPECT_GT(tools::InStr(xml, ">Trees\\Ash.xml<"), 0);
    // The commands are live again, "&Abort" is put away.
    EXPECT_TRUE(screen.button("Command6")->isEnabled());
    EXPECT_TRUE(screen.findChild<QPushButton*>("Command10")->isHidden());
    testing::Screenshot(screen, "frmListRS_route_commands");
}

TEST(frmListRSRoute, RemovesTheSelectedSceneryAndFixesTheProviders) {
    GridRoute f;
    frmListRS screen(f.ctx, f.grid(archives::kModeRemovals));
    screen.list()->selectRow(0);
    screen.button("Command8")->click();
    EXPECT_EQ(f.ui.texts().back(), "The requested changes have been made.");
    EXPECT_EQ(tools::InStr(f.tileXml(), "Oak.xml"), 0);
    EXPECT_GT(tools::InStr(f.tileXml(), "Ash.xml"), 0);
    screen.button("Command11")->click();
    EXPECT_EQ(f.ui.texts().back(), "Your RouteProperties.xml file has been modified as requested.");
    const std::string properties = f.game.read(std::string("Content/Routes/") + kRoute + "/RouteProperties.xml");
    EXPECT_GT(tools::InStr(properties, "<Provider d:type=\"cDeltaString\">Kuju</Provider>\r\n"), 0);
}

TEST(frmListRSRoute, SavesAsABatchFileWhenTheCallerAskedForOne) {
    GridRoute f;
    archives::ReportGrid grid;
    grid.mode = 12;
    grid.saveAsBatch = true;
    grid.takeList("DEL C:\\RW\\Assets\\Kuju\\Unused\\a.bin\r\nDEL C:\\RW\\Assets\\Kuju\\Unused\\b.bin\tx\r\n");
    frmListRS screen(f.ctx, std::move(grid));
    f.ui.files = {f.root.system() + "\\Reports\\unused.bat"};
    screen.button("Command7")->click();
    EXPECT_EQ(f.ui.dialogTitles.back(), "Save Grid as Batch File");
    EXPECT_EQ(f.root.read("Reports/unused.bat"),
              "DEL C:\\RW\\Assets\\Kuju\\Unused\\a.bin\r\nDEL C:\\RW\\Assets\\Kuju\\Unused\\b.bin\r\n");
}

}  // namespace
}  // namespace ferrolund::screens
