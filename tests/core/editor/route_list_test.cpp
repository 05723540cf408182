#include "editor/route_list.h"

#include <gtest/gtest.h>

#include "support/scripted_ui.h"
#include "support/temp_folder.h"

namespace ferrolund::editor {
namespace {

TEST(RouteList, RowsOfTheIndexOrNone) {
    testing::TempFolder root;
    app::AppContext ctx;
    ctx.appRoot = root.system();
    EXPECT_TRUE(LoadRouteList(ctx).empty());
    root.write("IndexFiles/RouteIndex.csv", "Bergbahn - Nord,1111-aaaa,0\r\nKüste,2222-bbbb,3\r\n\r\n");
    const auto rows = LoadRouteList(ctx);
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[1].name, "Küste");
    EXPECT_EQ(rows[1].folder, "2222-bbbb");
    EXPECT_EQ(rows[1].slot, "3");
}

TEST(RouteList, DispatchByTheNamesEnd) {
    struct Case { const char* file; const char* command; };
    const Case cases[] = {
        {"x/Scenario.BIN", "mnuOpenRS"},  {"x/a.XSec", "mnuOpenRS"},      {"x/a.geopcdx", "mnuOpenRS"},
        {"x/a.proxybin", "mnuOpenRS"},    {"x/RouteProperties.xml", "mnuXML"}, {"x/a.cost", "mnuXML"},
        {"x/a.tgt", "mnuXML"},            {"x/a.proxyxml", "mnuXML"},     {"x/readme.TXT", "mnuXML"},
        {"x/a.TgPcDx", "mnuOpenTex"},     {"x/a.dds", ""},                {"x/bin", ""},
    };
    for (const auto& c : cases) EXPECT_EQ(ListDispatchCommandFor(c.file), c.command) << c.file;
}

TEST(RouteList, ChoosingAFileOfARouteSetsUpItsOpening) {
    testing::ScriptedUi ui;
    app::AppContext ctx;
    ctx.ui = &ui;
    ctx.prefs.gameRoot = "/games/RailWorks";
    EditorDocument doc;
    ui.files = {std::string("/games/RailWorks/Content/Routes/1111/Scenarios/s/Scenario.bin")};
    EXPECT_EQ(ChooseFileOfRoute(ctx, doc, "1111"), "mnuOpenRS");
    EXPECT_TRUE(doc.openFromList);
    EXPECT_EQ(ctx.commandFile, "/games/RailWorks/Content/Routes/1111/Scenarios/s/Scenario.bin");
    EXPECT_EQ(ui.dialogTitles, std::vector<std::string>{"Open TrainSim file"});

    EditorDocument other;
    EXPECT_EQ(ChooseFileOfRoute(ctx, other, "1111"), "");  // cancelled
    EXPECT_FALSE(other.openFromList);
    EXPECT_EQ(ChooseFileOfRoute(ctx, other, ""), "");      // no row selected
}

TEST(RouteList, SavedAsCommaTextOrSpreadsheetByTheNamesEnd) {
    testing::TempFolder root;
    testing::ScriptedUi ui;
    app::AppContext ctx;
    ctx.appRoot = root.system();
    ctx.ui = &ui;
    const std::vector<RouteRow> rows = {{"Nord, S\xFC" "d", "1111", "0"}, {"Two", "2222", "3"}};
    ui.files = {root.system() + "/Reports/routes.csv", root.system() + "/Reports/routes.xls", std::nullopt};
    SaveRouteList(ctx, rows, {"Route Name", "Route Folder", "Route Slot"});
    EXPECT_TRUE(std::filesystem::is_directory(root.path() / "Reports"));
    EXPECT_EQ(root.read("Reports/routes.csv"),
              "Route Name,Route Folder,Route Slot\r\n\"Nord, S\xFC" "d\",1111,0\r\nTwo,2222,3\r\n");
    SaveRouteList(ctx, rows, {"Route Name", "Route Folder", "Route Slot"});
    const std::string xls = root.read("Reports/routes.xls");
    ASSERT_GT(xls.size(), 8u);
    EXPECT_EQ(xls.substr(0, 2), std::string("\x09\x08", 2));  // a BIFF beginning-of-file record
    SaveRouteList(ctx, rows, {});                                  // cancelled: nothing written
    EXPECT_EQ(ui.dialogTitles, std::vector<std::string>(3, "Save List as File"));
    EXPECT_TRUE(ui.shown.empty());
}

}  // namespace
}  // namespace ferrolund::editor
