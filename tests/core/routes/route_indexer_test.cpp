#include "routes/route_indexer.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/scripted_ui.h"
#include "support/temp_folder.h"

namespace ferrolund::routes {
namespace {

namespace fs = std::filesystem;

// A RouteProperties.xml with the given language elements of the display name.
std::string Properties(const std::string& languages) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<cRouteProperties>\r\n\t<DisplayName>\r\n"
           "\t\t<Localisation-cUserLocalisedString>\r\n" +
           languages +
           "\t\t</Localisation-cUserLocalisedString>\r\n\t</DisplayName>\r\n</cRouteProperties>\r\n";
}

struct Game {
    testing::TempFolder root;
    std::string game() const { return root.system() + "/game"; }
    void route(const std::string& folder, const std::string& languages, const char* fileName = "RouteProperties.xml") {
        root.write("game/Content/Routes/" + folder + "/" + fileName, Properties(languages));
    }
    void emptyRoute(const std::string& folder) { fs::create_directories(root.path() / "game/Content/Routes" / folder); }
};

TEST(RouteIndexer, NamesSlotsAndTheRulesOfTheText) {
    Game g;
    g.route("a0", "<English>Bristol &amp; Exeter</English>");
    g.emptyRoute("a1");                                            // no properties: a gap in the slots
    g.route("a2", "<English></English><German>Nord, S\xC3\xBC" "d: Linie</German>");
    g.route("A3", "<English>Ligne</English>", "ROUTEPROPERTIES.XML");  // file names in any case
    // Without English the name before stays, so French is never tried here.
    g.route("a4", "<French>Ligne du Nord</French>");
    EXPECT_EQ(BuildRouteIndexText(g.game(), kIndexRouteProperties),
              "Bristol & Exeter,a0,0\r\n"
              "Nord- S\xFC" "d Linie,a2,2\r\n"
              "Ligne,A3,3\r\n"
              "Ligne,a4,4\r\n"
              "\r\n");
}

TEST(RouteIndexer, ARouteWithoutAnyNameTakesTheNameBeforeIt) {
    Game g;
    g.route("r1", "<Dutch>Eerste</Dutch>");
    g.route("r2", "<Welsh>Dim</Welsh>");
    EXPECT_EQ(BuildRouteIndexText(g.game(), kIndexRouteProperties), "Eerste,r1,0\r\nEerste,r2,1\r\n\r\n");

    Game first;  // only a first route in that state is skipped
    first.route("r1", "<Welsh>Dim</Welsh>");
    first.route("r2", "<Russian>Vtoroy</Russian>");
    EXPECT_EQ(BuildRouteIndexText(first.game(), kIndexRouteProperties), "Vtoroy,r2,1\r\n\r\n");
    // Three languages only, and a nameless route still gets its row.
    EXPECT_EQ(BuildRouteIndexText(first.game(), kExtractedRouteProperties), ",r1,0\r\n,r2,1\r\n\r\n");
}

TEST(RouteIndexer, ALongNameLosesTheEndOfItsFolderButKeepsItsSlot) {
    Game g;
    const std::string folder = "12345678-1234-1234-1234-123456789abc";
    g.route(folder, "<English>" + std::string(220, 'N') + "</English>");
    const std::string routesPath = g.game() + "\\Content\\Routes";
    const std::string text = BuildRouteIndexText(g.game(), kIndexRouteProperties);
    const std::string row = text.substr(0, text.find("\r\n"));
    ASSERT_GT(routesPath.size(), 20u);
    EXPECT_EQ(row.size(), 240 - routesPath.size() + 2);        // cut, then ",0"
    EXPECT_EQ(row.substr(row.size() - 2), ",0");
    EXPECT_EQ(row.find(folder), std::string::npos);
    EXPECT_NE(BuildRouteIndexText(g.game(), kExtractedRouteProperties).find(folder), std::string::npos);
}

TEST(RouteIndexer, NoRoutesFolderGivesTheEmptyIndex) {
    Game g;
    EXPECT_EQ(BuildRouteIndexText(g.game(), kIndexRouteProperties), "\r\n");
}

TEST(RouteIndexer, ReloadPlacesRowsAsEachCommandDoes) {
    const std::string text = "A,a,0\r\nB,b,1\r\nC,c,2\r\n\r\n";
    const RouteIndex index = ReloadRouteIndex(text, kIndexRouteProperties, 3);
    ASSERT_EQ(index.count(), 3);  // the first place empty; the third row no longer fits
    EXPECT_EQ(index.routeName[0], "");
    EXPECT_EQ(index.routeName[1], "A");
    EXPECT_EQ(index.routeName[2], "B");
    const RouteIndex extracted = ReloadRouteIndex(text, kExtractedRouteProperties, 3);
    ASSERT_EQ(extracted.count(), 3);
    EXPECT_EQ(extracted.routeName[0], "A");
    EXPECT_EQ(extracted.routeSlot[2], "2");
}

TEST(RouteIndexer, TheCommandWritesReloadsAndTells) {
    Game g;
    g.route("r1", "<English>One</English>");
    g.route("r2", "<English>Two</English>");
    g.emptyRoute("r3");
    testing::ScriptedUi ui;
    app::AppContext ctx;
    ctx.appRoot = g.root.system() + "/app";
    ctx.prefs.gameRoot = g.game();
    ctx.ui = &ui;
    IndexRouteProperties(ctx);
    const std::string first = g.root.read("app/IndexFiles/RouteIndex.csv");
    EXPECT_EQ(first, "One,r1,0\r\nTwo,r2,1\r\n\r\n");
    EXPECT_EQ(ui.texts(), std::vector<std::string>{"All RouteProperties.xml files have been indexed and\n"
                                                   "RouteIndex.csv written to 'IndexFiles' folder"});
    EXPECT_TRUE(ctx.prefs.routesIndexed);
    ASSERT_EQ(ctx.routeIndex.count(), 3);
    EXPECT_EQ(ctx.routeIndex.routeFolder[2], "r2");
    IndexRouteProperties(ctx);
    EXPECT_EQ(g.root.read("app/IndexFiles/RouteIndex.csv"), first);  // twice gives the same bytes
    EXPECT_EQ(ui.busyDepth, 0);
}

TEST(RouteIndexer, TheRealRoute) {
    const fs::path route = fs::path(FERROLUND_TESTDATA) / "routes";
    if (!fs::exists(route)) GTEST_SKIP() << "shared test data not found at " << route;
    testing::TempFolder root;
    fs::create_directories(root.path() / "game/Content");
    fs::create_directory_symlink(route, root.path() / "game/Content/Routes");
    const std::string text = BuildRouteIndexText(root.system() + "/game", kIndexRouteProperties);
    EXPECT_NE(text.find(",ff1ebaa8-82f5-43ca-9816-859956f4d56c,0\r\n"), std::string::npos) << text;
    EXPECT_EQ(text.substr(text.size() - 4), "\r\n\r\n");
    EXPECT_GT(text.find(','), 0u);  // the route has a name
}

}  // namespace
}  // namespace ferrolund::routes
