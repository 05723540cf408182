// "Fix Prov/Prod in RouteProperties.xml": the preload list rebuilt from the grid.

#include <gtest/gtest.h>

#include <filesystem>

#include "core/tools/testdata_file.h"
#include "routes/tile_edit_command.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"
#include "tools/serz_convert.h"
#include "tools/text_search.h"

namespace ferrolund::routes {
namespace {

namespace fs = std::filesystem;
using Pairs = std::vector<std::pair<std::string, std::string>>;

const std::string kBlock = "\t\t<Set d:id=\"xxxxxxxx\">\r\n\t\t\t<Provider>aaaaaa</Provider>\r\n"
                           "\t\t\t<Product>bbbbbb</Product>\r\n\t\t</Set>\r\n";

std::string Properties(const std::string& preload) {
    return "<cRouteProperties d:id=\"500\">\n"
           "\t<InfrastructureModified d:type=\"bool\">1</InfrastructureModified>\n"
           "\t<BlueprintID><Provider>DTG</Provider><Product>Academy</Product></BlueprintID>\n"
           "\t<WeatherBlueprint d:id=\"900\"><Provider>Kuju</Provider><Product>RailSimulator</Product>"
           "</WeatherBlueprint>\n"
           "\t<RBlueprintSetPreLoad>\n" +
           preload + "\t</RBlueprintSetPreLoad>\n</cRouteProperties>\n";
}

std::string Entry(int id, const std::string& provider, const std::string& product) {
    return "\t\t<Set d:id=\"" + std::to_string(id) + "\">\n\t\t\t<Provider>" + provider + "</Provider>\n\t\t\t<Product>" +
           product + "</Product>\n\t\t</Set>\n";
}

TEST(PreloadFix, WeatherAndTemplateFirstThenTheGridsPairsOnceEachWithNewIds) {
    const std::string old = Properties(Entry(17, "Old", "Gone"));
    const auto rebuilt = RebuildPreload(old, kBlock, {{"kuju", "railsimulator"}, {"Hartwell", "SteamHeritage"},
                                                      {"HARTWELL", "steamheritage"}, {"R&amp;D", "Yard"}});
    ASSERT_TRUE(rebuilt.has_value());
    // Line ends follow the file's; ids follow the largest of the file.
    EXPECT_EQ(*rebuilt, Properties(Entry(908, "Kuju", "RailSimulator") + Entry(916, "DTG", "Academy") +
                                   Entry(924, "Hartwell", "SteamHeritage") + Entry(932, "R&amp;D", "Yard")));
    EXPECT_FALSE(RebuildPreload("<cRouteProperties></cRouteProperties>", kBlock, {}).has_value());
    EXPECT_FALSE(RebuildPreload("<RBlueprintSetPreLoad> but never closed", kBlock, {}).has_value());
}

TEST(PreloadFix, ThePairsOfTheGridsRows) {
    archives::ReportGrid grid;
    grid.takeList("/g\\Assets\\Kuju\\RailSimulator\\Scenery\\Oak.bin\t(Scenery Item)\r\n"
                  "Hartwell\\SteamHeritage\r\n"
                  "Brackenridge\tCountryScenery\r\n"
                  "Ostvale\\Stock\\RailVehicles\\Class20.xml\r\n"
                  "Rolling stock used in\t(Scenery Item)\r\n"
                  "Lonely\r\n");
    EXPECT_EQ(GridProviders("/g", grid), (Pairs{{"Kuju", "RailSimulator"},
                                                {"Hartwell", "SteamHeritage"},
                                                {"Brackenridge", "CountryScenery"},
                                                {"Ostvale", "Stock"}}));
}

TEST(PreloadFix, TheRealRoutePropertiesStaysConvertible) {
    FERROLUND_READ_TESTDATA(original, "routes/ff1ebaa8-82f5-43ca-9816-859956f4d56c/RouteProperties.xml");
    testing::TempFolder app;
    fs::copy(fs::path(FERROLUND_SOURCE_DIR) / "data" / "Templates", app.path() / "Templates");
    const std::string form = app.read("Templates/ProvHeader.txt");
    const auto rebuilt = RebuildPreload(original, form, {{"DTG", "academy"}, {"Kuju", "RailSimulator"}});
    ASSERT_TRUE(rebuilt.has_value());
    // Only the section changed: Academy (weather and template) once, then Kuju.
    const long open = tools::InStr(original, "<RBlueprintSetPreLoad>");
    const long close = tools::InStr(original, "</RBlueprintSetPreLoad>");
    EXPECT_EQ(rebuilt->substr(0, static_cast<std::size_t>(open) + 22), original.substr(0, static_cast<std::size_t>(open) + 22));
    const std::size_t tail = original.size() - static_cast<std::size_t>(close - 1);
    EXPECT_EQ(rebuilt->substr(rebuilt->size() - tail), original.substr(original.size() - tail));
    const std::string section = rebuilt->substr(static_cast<std::size_t>(open) - 1,
                                                rebuilt->size() - tail - static_cast<std::size_t>(open) + 1);
    EXPECT_EQ(section.find('\r'), std::string::npos);
    EXPECT_EQ(tools::InStr(section, "MunichRosenheim"), 0);
    EXPECT_GT(tools::InStr(section, "<Product d:type=\"cDeltaString\">Academy</Product>\n"), 0);
    EXPECT_GT(tools::InStr(section, "<Provider d:type=\"cDeltaString\">Kuju</Provider>\n"), 0);
    // The converter takes the new text, and gives the same section back.
    app.write("in.xml", *rebuilt);
    testing::ScriptedUi ui;
    app::AppContext ctx;
    ctx.appRoot = app.system();
    ctx.ui = &ui;
    const std::string bin = app.system() + "/out.bin";
    ASSERT_FALSE(tools::SerzConvert(ctx, app.system() + "/in.xml", bin, tools::SerzDirection::ToBinary));
    std::string back;
    ASSERT_FALSE(tools::SerzReadXml(ctx, bin, back));
    std::erase(back, '\r');  // the converter writes CR LF
    EXPECT_GT(tools::InStr(back, section.substr(section.find("<iBlueprintLibrary"))), 0);
}

struct PreloadRoute {
    testing::TempFolder app;
    testing::TempFolder game;
    testing::ScriptedUi ui;
    app::AppContext ctx;
    archives::ReportGrid grid;
    PreloadRoute() {
        ctx.appRoot = app.system();
        ctx.prefs.gameRoot = game.system();
        ctx.ui = &ui;
        fs::copy(fs::path(FERROLUND_SOURCE_DIR) / "data" / "Templates", app.path() / "Templates");
        grid.routeFolder = "r1";
        game.write("Content/Routes/r1/Scenery/keep.txt", "");
        grid.takeList(game.system() + "\\Assets\\Hartwell\\SteamHeritage\\Oak.bin\t(Scenery Item)\r\n");
    }
};

TEST(PreloadFix, TheFileIsReplacedAfterItsBackUp) {
    PreloadRoute r;
    const std::string old = Properties(Entry(17, "Old", "Gone"));
    r.game.write("Content/Routes/r1/RouteProperties.xml", old);
    EXPECT_TRUE(FixRouteProviders(r.ctx, r.grid));
    EXPECT_EQ(r.game.read("Content/Routes/r1/RouteProperties.xml.bak"), old);
    const std::string now = r.game.read("Content/Routes/r1/RouteProperties.xml");
    EXPECT_EQ(tools::InStr(now, "Gone"), 0);
    EXPECT_GT(tools::InStr(now, ">SteamHeritage</Product>"), 0);
    EXPECT_EQ(r.ui.texts(), std::vector<std::string>{"Your RouteProperties.xml file has been modified as requested."});
}

TEST(PreloadFix, AMissingFileOrSectionChangesNothing) {
    PreloadRoute r;
    EXPECT_FALSE(FixRouteProviders(r.ctx, r.grid));
    EXPECT_EQ(r.ui.texts().back(),
              "There is no RouteProperties.xml file for this route\ntherefore the route is invalid and can't be used.");
    r.game.write("Content/Routes/r1/RouteProperties.xml", "<cRouteProperties/>");
    EXPECT_FALSE(FixRouteProviders(r.ctx, r.grid));
    EXPECT_EQ(r.game.read("Content/Routes/r1/RouteProperties.xml"), "<cRouteProperties/>");
    EXPECT_FALSE(fs::exists(r.game.path() / "Content/Routes/r1/RouteProperties.xml.bak"));
    r.grid.routeFolder = "not-installed";
    const std::size_t shown = r.ui.shown.size();
    EXPECT_FALSE(FixRouteProviders(r.ctx, r.grid));
    EXPECT_EQ(r.ui.shown.size(), shown);
}

}  // namespace
}  // namespace ferrolund::routes
