#include "screens/routes/stock_commands.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>
#include <filesystem>

#include "route_screen_fixture.h"
#include "screens/app/qt_text.h"
#include "screens/archives/frmListRS.h"
#include "screens/routes/dlgNotInScenarios.h"
#include "screens/routes/frmDelRoute.h"
#include "screens/routes/frmFindLoco.h"
#include "screens/routes/frmMissList.h"

namespace ferrolund::screens {
namespace {

namespace fs = std::filesystem;

constexpr const char* kRouteA = "aaaa-route";
constexpr const char* kRouteB = "bbbb-route";

// Two routes with a scenario each, whose Scenario.bin names wagons; one of them is present.
struct StockRoutes : testing::RouteScreenFixture {
    StockRoutes() {
        writeIndex(std::string("Zeta Line,") + kRouteA + ",1\r\nAlder Branch," + kRouteB + ",2");
        scenario(kRouteA, "s1", "Coal run", "");
        scenario(kRouteB, "s2", "Milk run", "");
        made = stock(kRouteA, "s1", {{"101", "Wagons\\Van.xml"}, {"102", "Wagons\\Gone.xml"}}) &&
               stock(kRouteB, "s2", {{"201", "wagons\\VAN.xml"}});
        asset("Hart/Coal/Wagons/Van.bin");
    }

    // A Scenario.bin of one consist, made binary by the converter.
    bool stock(const std::string& route, const std::string& folder,
               const std::vector<std::pair<std::string, std::string>>& cars) {
        std::string xml =
            "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<cRecordSet xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" "
            "d:version=\"1.0\" d:id=\"1\">\r\n<Record>\r\n<cConsist d:id=\"2\">\r\n";
        int id = 10;
        for (const auto& [number, blueprint] : cars)
            xml +=
                "<cOwnedEntity d:id=\"" + std::to_string(id++) + "\">\r\n<UniqueNumber d:type=\"cDeltaString\">" +
                number +
                "</UniqueNumber>\r\n<BlueprintID>\r\n<iBlueprintLibrary-cAbsoluteBlueprintID>\r\n<BlueprintSetID>\r\n"
                "<iBlueprintLibrary-cBlueprintSetID>\r\n<Provider d:type=\"cDeltaString\">Hart</Provider>\r\n"
                "<Product d:type=\"cDeltaString\">Coal</Product>\r\n</iBlueprintLibrary-cBlueprintSetID>\r\n"
                "</BlueprintSetID>\r\n<BlueprintID d:type=\"cDeltaString\">" +
                blueprint +
                "</BlueprintID>\r\n</iBlueprintLibrary-cAbsoluteBlueprintID>\r\n</BlueprintID>\r\n"
                "<Name d:type=\"cDeltaString\">Wagon " +
                number + "</Name>\r\n</cOwnedEntity>\r\n";
        xml += "</cConsist>\r\n</Record>\r\n</cRecordSet>\r\n";
        const auto source = root.write("scenario-source.xml", xml);
        const std::string relative = "Content/Routes/" + route + "/Scenarios/" + folder + "/Scenario.bin";
        game.write(relative, "");
        return !tools::SerzConvert(ctx, source.string(), (game.path() / relative).string(),
                                   tools::SerzDirection::ToBinary);
    }

    bool made = false;
};

TEST(StockCommands, AddsTheButtonsWithTheirCaptions) {
    StockRoutes f;
    frmDelRoute screen(f.ctx);
    const std::pair<const char*, const char*> buttons[] = {
        {"Command24", "List Scenarios in all routes"},
        {"Command3", "List  items used by selected Scenario"},
        {"Command27", "List Stock used by selected route"},
        {"Command15", "List Stock missing in all scenarios"},
        {"Command21", "List ALL rolling stock used by all routes"},
        {"Command19", "List Stock used with wagon numbers"},
        {"Command28", "View Missing Stock Screen"},
        {"FindLoco", "Find loco in routes"},
    };
    for (const auto& [name, caption] : buttons) {
        ASSERT_NE(screen.button(name), nullptr) << name;
        EXPECT_EQ(FromQt(screen.button(name)->text()), caption) << name;
    }
    ASSERT_TRUE(screen.loadRoutes());
    testing::Screenshot(screen, "frmDelRoute_stock_commands");
}

TEST(StockCommands, MissingStockNeedsAllScenariosThenListsAndCounts) {
    StockRoutes f;
    ASSERT_TRUE(f.made);
    frmDelRoute screen(f.ctx);
    ASSERT_TRUE(screen.loadRoutes());

    screen.button("Command15")->click();
    ASSERT_EQ(f.ui.texts().size(), 1u);
    EXPECT_NE(f.ui.texts()[0].find("'List Scenarios in all routes' first"), std::string::npos);
    EXPECT_TRUE(f.grids(screen).empty());

    f.ui.shown.clear();
    screen.button("Command24")->click();
    ASSERT_EQ(screen.scenarios()->rowCount(), 2);
    EXPECT_EQ(f.text(screen.scenarios(), 0, 0), "Coal run");
    EXPECT_EQ(f.text(screen.scenarios(), 1, 3), kRouteB);
    EXPECT_EQ(f.ui.texts(), std::vector<std::string>{"All Scenarios now listed. Now click the button:-\n'List Stock "
                                                     "missing in all Scenarios' to complete\nthis option."});

    screen.button("Command15")->click();
    const auto shown = f.grids(screen);
    ASSERT_EQ(shown.size(), 1u);
    const archives::ReportGrid& grid = shown[0]->grid();
    EXPECT_EQ(grid.mode, archives::kModeMissingInScenarios);
    ASSERT_EQ(grid.rowCount(), 1u);
    EXPECT_EQ(grid.cell(0, 0), "Hart\\Coal\\Wagons\\Gone.bin");
    EXPECT_EQ(grid.cell(0, 1), "Zeta Line");
    EXPECT_EQ(FromQt(screen.findChild<QLabel*>("Label5")->text()), "1");
    EXPECT_EQ(f.root.read("TempFiles/Test.csv"), "Zeta Line,Coal run,Hart\\Coal\\Wagons\\Gone.bin\r\n");

    // Once the lower grid lists one route only, the scenarios of all routes must be listed again.
    f.ui.shown.clear();
    f.selectRoute(screen, kRouteA);
    screen.listScenarios();
    screen.button("Command15")->click();
    ASSERT_EQ(f.ui.texts().size(), 1u);
    EXPECT_NE(f.ui.texts()[0].find("'List Scenarios in all routes' first"), std::string::npos);
    EXPECT_EQ(f.grids(screen).size(), 1u);

    // The missing stock screen shows what the command gathered.
    screen.button("Command28")->click();
    const auto lists = screen.findChildren<frmMissList*>();
    ASSERT_EQ(lists.size(), 1);
    EXPECT_EQ(lists[0]->grid()->rowCount(), 1);
    EXPECT_EQ(lists[0]->windowTitle(), "Missing Rolling Stock in All Scenarios");
}

TEST(StockCommands, RouteStockAllRoutesAndWagonNumbersOpenTheirGrids) {
    StockRoutes f;
    ASSERT_TRUE(f.made);
    frmDelRoute screen(f.ctx);
    ASSERT_TRUE(screen.loadRoutes());
    f.selectRoute(screen, kRouteA);

    struct Case {
        const char* button;
        int mode;
        std::size_t rows;
        std::string first;
    };
    const Case cases[] = {
        {"Command27", archives::kModeScenarioStock, 2, "Hart\\Coal\\Wagons\\Van.bin"},
        {"Command21", 10, 2, "Hart\\Coal\\Wagons\\Gone.bin"},  // the two routes' vans are one blueprint
        {"Command19", 7, 2, "101"},
    };
    for (const Case& c : cases) {
        for (frmListRS* g : f.grids(screen)) delete g;
        screen.button(c.button)->click();
        const auto shown = f.grids(screen);
        ASSERT_EQ(shown.size(), 1u) << c.button;
        EXPECT_EQ(shown[0]->grid().mode, c.mode) << c.button;
        ASSERT_EQ(shown[0]->grid().rowCount(), c.rows) << c.button;
        EXPECT_EQ(shown[0]->grid().cell(0, 0), c.first) << c.button;
        testing::Screenshot(*shown[0], std::string("stock_grid_") + c.button);
    }
    EXPECT_TRUE(fs::exists(f.root.path() / "Reports" / "Zeta Line_Stock.csv"));
    EXPECT_TRUE(fs::exists(f.root.path() / "Reports" / "All Routes_AllStock.csv"));
}

// "&Abort" pressed while the first scenario is read.
struct AbortAtFirstPump : testing::ScriptedUi {
    app::AppContext* ctx = nullptr;
    void pump() override {
        ++pumps;
        ctx->abortFlag = true;
    }
};

TEST(StockCommands, AbortLeavesAnIncompleteListAndSaysSo) {
    StockRoutes f;
    ASSERT_TRUE(f.made);
    AbortAtFirstPump aborting;
    aborting.ctx = &f.ctx;
    f.ctx.ui = &aborting;
    frmDelRoute screen(f.ctx);
    ASSERT_TRUE(screen.loadRoutes());
    screen.button("Command21")->click();
    const auto shown = f.grids(screen);
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0]->grid().rowCount(), 0u);
    const QPlainTextEdit* notes = screen.findChild<QPlainTextEdit*>();
    ASSERT_NE(notes, nullptr);
    EXPECT_EQ(FromQt(notes->toPlainText()), "Stopped by \"Abort\": the list is incomplete.");
    EXPECT_TRUE(screen.button("Command21")->isEnabled());
    EXPECT_EQ(f.ctx.ui, &aborting);
}

TEST(StockCommands, ItemsOfSelectedScenarios) {
    StockRoutes f;
    ASSERT_TRUE(f.made);
    frmDelRoute screen(f.ctx);
    ASSERT_TRUE(screen.loadRoutes());
    f.selectRoute(screen, kRouteA);
    screen.listScenarios();

    screen.button("Command3")->click();
    EXPECT_EQ(f.ui.texts(), std::vector<std::string>{"You do not appear to have selected a scenario?"});

    f.ui.shown.clear();
    screen.scenarios()->selectRow(0);
    screen.button("Command3")->click();
    const auto shown = f.grids(screen);
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_EQ(shown[0]->grid().heading, "Rolling-stock used in Coal run");
    EXPECT_EQ(shown[0]->grid().mode, archives::kModeScenarioStock);
    EXPECT_EQ(shown[1]->grid().heading, "Assets used in Coal run");
    ASSERT_EQ(shown[1]->grid().rowCount(), 1u);
    EXPECT_EQ(shown[1]->grid().cell(0, 0), "There was no Scenery file with this scenario");
}

TEST(StockCommands, MissListLoadsSavesRemovesDuplicatesAndClears) {
    StockRoutes f;
    f.root.write("TempFiles/Test.csv", "R,S,P\\a.bin\r\nR,S,P\\b.bin\r\nR,S,P\\a.bin\r\n");
    frmMissList screen(f.ctx);
    ASSERT_EQ(screen.grid()->rowCount(), 3);
    screen.show();
    testing::Screenshot(screen, "frmMissList");
    screen.button("Command1")->click();
    EXPECT_EQ(screen.grid()->rowCount(), 2);
    EXPECT_EQ(FromQt(screen.findChild<QLabel*>("Label2")->text()), "2");

    const std::string saved = (f.root.path() / "Reports" / "missing.csv").string();
    f.ui.files = {saved};
    screen.button("Command5")->click();
    EXPECT_EQ(f.root.read("Reports/missing.csv"),
              "Route,Scenario,Missing Rolling Stock\r\nR,S,P\\a.bin\r\nR,S,P\\b.bin\r\n");

    screen.button("Command3")->click();
    EXPECT_EQ(screen.grid()->rowCount(), 0);
    EXPECT_EQ(FromQt(screen.findChild<QLabel*>("Label2")->text()), "0");

    // A name not ending in csv loads nothing; the saved file comes back without its heading row.
    f.ui.files = {(f.root.path() / "Reports" / "missing.txt").string(), saved};
    screen.button("Command4")->click();
    EXPECT_EQ(screen.grid()->rowCount(), 0);
    screen.button("Command4")->click();
    ASSERT_EQ(screen.grid()->rowCount(), 2);
    EXPECT_EQ(f.text(screen.grid(), 0, 2), "P\\a.bin");
    EXPECT_EQ(f.ui.dialogTitles,
              (std::vector<std::string>{"Save Grid as File", "Load Grid from File", "Load Grid from File"}));
}

TEST(StockCommands, NotInScenariosDialogSetsTheFlag) {
    for (const bool ok : {true, false}) {
        dlgNotInScenarios dialog;
        dialog.show();
        if (ok) testing::Screenshot(dialog, "dlgNotInScenarios");
        (ok ? dialog.okButton() : dialog.allButton())->click();
        EXPECT_EQ(dialog.ignoreListed(), ok);
        EXPECT_EQ(dialog.result(), QDialog::Accepted);
    }
}

TEST(StockCommands, FindLocoChecksTheConsistsAgainstTheScenarios) {
    StockRoutes f;
    ASSERT_TRUE(f.made);
    const std::string consists =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<cRecordSet xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" "
        "d:version=\"1.0\" d:id=\"1\">\r\n<Record>\r\n<cConsistTemplate d:id=\"2\">\r\n<DisplayName>\r\n"
        "<Localisation-cUserLocalisedString>\r\n<English d:type=\"cDeltaString\">Coal train</English>\r\n"
        "</Localisation-cUserLocalisedString>\r\n</DisplayName>\r\n"
        "<cConsistTemplateEntry d:id=\"3\">\r\n<Provider d:type=\"cDeltaString\">Hart</Provider>\r\n"
        "<Product d:type=\"cDeltaString\">Coal</Product>\r\n<BlueprintID d:type=\"cDeltaString\">Wagons\\Van.xml"
        "</BlueprintID>\r\n</cConsistTemplateEntry>\r\n<cConsistTemplateEntry d:id=\"4\">\r\n"
        "<Provider d:type=\"cDeltaString\">Hart</Provider>\r\n<Product d:type=\"cDeltaString\">Coal</Product>\r\n"
        "<BlueprintID d:type=\"cDeltaString\">Wagons\\Tank.xml</BlueprintID>\r\n</cConsistTemplateEntry>\r\n"
        "</cConsistTemplate>\r\n</Record>\r\n</cRecordSet>\r\n";
    const auto source = f.root.write("consists.xml", consists);
    f.game.write("Content/ConsistTemplates.bin", "");
    ASSERT_FALSE(tools::SerzConvert(f.ctx, source.string(), (f.game.path() / "Content/ConsistTemplates.bin").string(),
                                    tools::SerzDirection::ToBinary));

    routes::RouteIndex index;
    index.routeName = {"Zeta Line", "Alder Branch"};
    index.routeFolder = {kRouteA, kRouteB};
    index.routeSlot = {"1", "2"};
    frmFindLoco screen(f.ctx, index);
    ASSERT_EQ(screen.routes()->rowCount(), 2);
    EXPECT_EQ(f.text(screen.routes(), 0, 0), "Alder Branch");

    screen.button("Command15")->click();  // no scenarios listed yet
    EXPECT_EQ(f.ui.texts(), std::vector<std::string>{"List the scenarios of a route first."});

    screen.routes()->selectRow(1);
    screen.button("Command1")->click();
    ASSERT_EQ(screen.scenarios()->rowCount(), 1);
    EXPECT_EQ(f.text(screen.scenarios(), 0, 0), "Coal run");

    std::vector<bool> answers{false, true};
    for (const bool ignore : answers) {
        screen.askIgnore = [ignore](bool& flag) {
            flag = ignore;
            return true;
        };
        screen.button("Command2")->click();
        std::vector<std::string> lines;
        for (int r = 0; r < screen.results()->count(); ++r) lines.push_back(FromQt(screen.results()->item(r)->text()));
        std::vector<std::string> expected{
            "Hart\\Coal\\Wagons\\Tank.bin found in Consist Coal train is not used in any "
            "scenarios"};
        if (!ignore) expected.insert(expected.begin(), "Hart\\Coal\\Wagons\\Van.bin found in Consist Coal train");
        EXPECT_EQ(lines, expected);
    }
    screen.show();
    testing::Screenshot(screen, "frmFindLoco");

    screen.button("Command15")->click();
    ASSERT_EQ(screen.results()->count(), 2);
    EXPECT_EQ(FromQt(screen.results()->item(0)->text()), "Hart\\Coal\\Wagons\\Gone.bin");
}

}  // namespace
}  // namespace ferrolund::screens
