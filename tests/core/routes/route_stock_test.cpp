#include "routes/route_stock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "support/scripted_ui.h"
#include "support/temp_folder.h"
#include "tools/codepage.h"
#include "tools/serz_convert.h"

namespace ferrolund::routes {
namespace {

namespace fs = std::filesystem;

// A vehicle of a consist as the converter writes it: its number, its blueprint, an empty
// reskin reference and its name.
struct Car {
    std::string number, provider, product, blueprint, name;
};

std::string Ref(const std::string& tag, const std::string& provider, const std::string& product,
                const std::string& blueprint) {
    return "<" + tag +
           ">\r\n<iBlueprintLibrary-cAbsoluteBlueprintID>\r\n<BlueprintSetID>\r\n"
           "<iBlueprintLibrary-cBlueprintSetID>\r\n<Provider d:type=\"cDeltaString\">" +
           provider + "</Provider>\r\n<Product d:type=\"cDeltaString\">" + product +
           "</Product>\r\n</iBlueprintLibrary-cBlueprintSetID>\r\n</BlueprintSetID>\r\n"
           "<BlueprintID d:type=\"cDeltaString\">" +
           blueprint + "</BlueprintID>\r\n</iBlueprintLibrary-cAbsoluteBlueprintID>\r\n</" + tag + ">\r\n";
}

std::string ScenarioXml(const std::vector<Car>& cars) {
    std::string xml =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<cRecordSet xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" "
        "d:version=\"1.0\" d:id=\"1\">\r\n<Record>\r\n<cConsist d:id=\"2\">\r\n<RailVehicles>\r\n";
    int id = 10;
    for (const Car& car : cars) {
        xml += "<cOwnedEntity d:id=\"" + std::to_string(id++) + "\">\r\n<UniqueNumber d:type=\"cDeltaString\">" +
               car.number + "</UniqueNumber>\r\n" + Ref("BlueprintID", car.provider, car.product, car.blueprint) +
               Ref("ReskinBlueprintID", "", "", "") + "<Name d:type=\"cDeltaString\">" + car.name +
               "</Name>\r\n</cOwnedEntity>\r\n";
    }
    return xml + "</RailVehicles>\r\n</cConsist>\r\n</Record>\r\n</cRecordSet>\r\n";
}

// Sets AbortFlag at the given pump, as "&Abort" would.
struct AbortingUi : testing::ScriptedUi {
    app::AppContext* ctx = nullptr;
    int abortAt = 1;
    void pump() override {
        if (++pumps >= abortAt) ctx->abortFlag = true;
    }
};

struct StockGame {
    testing::TempFolder root;
    AbortingUi ui;
    app::AppContext ctx;
    StockGame() {
        ctx.appRoot = root.system() + "/app";
        ctx.prefs.gameRoot = root.system() + "/game";
        ui.ctx = &ctx;
        ui.abortAt = 1 << 30;
        ctx.ui = &ui;
        root.write("app/TempFiles/keep", "");
    }
    std::string gamePath(const std::string& relative) const { return ctx.gameRoot() + "\\" + relative; }
    // An XML text made binary by the converter, below the game folder.
    void binary(const std::string& relative, const std::string& xml) {
        const auto source = root.write("source.xml", xml);
        root.write("game/" + relative, "");
        ASSERT_FALSE(tools::SerzConvert(ctx, source.string(), (root.path() / "game" / relative).string(),
                                        tools::SerzDirection::ToBinary));
    }
    void scenario(const std::string& route, const std::string& folder, const std::vector<Car>& cars) {
        binary("Content/Routes/" + route + "/Scenarios/" + folder + "/Scenario.bin", ScenarioXml(cars));
    }
    StockScenario row(const std::string& route, const std::string& folder, const std::string& name) const {
        return {"Route " + route, route, ScenarioRow{name, "dev", folder, route, ScenarioKind::Standard}};
    }
};

TEST(RouteStock, GetStockRepairsAndFindsProviderBackwards) {
    const std::string xml = ScenarioXml({
        {"1", "Hart&amp;Co", "Coal", "RailVehicles\\Hopper.xml", "Hopper"},
        {"2", "Hart", "Coal", "RailVehicles\\Van.XML", "Van"},
        {"3", "Hart", "Coal", "RailVehicles\\Loco.bin", "Loco"},
    });
    std::vector<std::string> paths;
    for (const StockItem& item : GetStock(xml)) paths.push_back(item.path);
    // The empty reskin references are passed over.
    EXPECT_EQ(paths,
              (std::vector<std::string>{"Hart&Co\\Coal\\RailVehicles\\Hopper.bin", "Hart\\Coal\\RailVehicles\\Van.bin",
                                        "Hart\\Coal\\RailVehicles\\Loco.bin"}));
    EXPECT_TRUE(GetStock("<BlueprintID d:type=\"cDeltaString\">unterminated").empty());
}

TEST(RouteStock, VariantsByTheirSuffix) {
    const std::pair<const char*, bool> cases[] = {
        {"P\\Q\\Wagons\\Hopper_MT.bin", true}, {"P\\Q\\Wagons\\hopper_mt.xml", true},
        {"P\\Q\\Wagons\\Van_DO.bin", true},    {"P\\Q\\Wagons\\Van_PO.bin", true},
        {"P\\Q\\Wagons\\Van_ND.bin", true},    {"P\\Q\\Wagons\\Van_DF.bin", true},
        {"P\\Q\\Wagons\\Van_DR.bin", true},    {"P\\Q\\Locos\\Class20_Dead.bin", true},
        {"P\\Q\\Wagons\\Hopper.bin", false},   {"P\\Q\\Wagons_MT\\Hopper.bin", false},
        {"P\\Q\\Wagons\\MT.bin", false},       {"P\\Q\\Wagons\\Hopper_MTX.bin", false},
    };
    for (const auto& [path, variant] : cases) EXPECT_EQ(IsStockVariant(path), variant) << path;
}

TEST(RouteStock, DefaultStockReadsAt211Lines) {
    StockGame g;
    std::string text = "; a note\r\n\r\nHart\\Coal\\\r\n";
    for (int line = 4; line <= 215; ++line) text += "P\\Q\\Line" + std::to_string(line) + ".bin\r\n";
    g.root.write("app/Templates/DefaultStock.txt", text);
    const std::vector<std::string> defaults = ReadDefaultStock(g.ctx);
    ASSERT_FALSE(defaults.empty());
    EXPECT_EQ(defaults.front(), "Hart\\Coal\\");
    EXPECT_EQ(defaults.back(), "P\\Q\\Line211.bin");
    EXPECT_EQ(defaults.size(), 209u);  // the note and the blank line are no entries
    EXPECT_EQ(DefaultMark(defaults, "p\\q\\line211.BIN"), kDefaultStockMark);
    EXPECT_EQ(DefaultMark(defaults, "P\\Q\\Line212.bin"), "");
    EXPECT_EQ(DefaultMark(defaults, "hart\\coal\\Wagons\\Van.bin"), kDefaultStockMark);
    EXPECT_EQ(DefaultMark(defaults, "Hart\\Coalfield\\Van.bin"), "");

    StockGame none;
    EXPECT_TRUE(ReadDefaultStock(none.ctx).empty());
}

TEST(RouteStock, ScenarioRowsDropDuplicatesByCase) {
    const std::string xml = ScenarioXml({
        {"1", "Hart", "Coal", "Wagons\\Van.xml", "Van"},
        {"2", "HART", "coal", "wagons\\van.xml", "Van"},
        {"3", "Hart", "Coal", "Locos\\Loco.xml", "Loco"},
    });
    const ReportListing listing = ScenarioStockRows(xml, {"Hart\\Coal\\Locos\\Loco.bin"}, "Coal run");
    EXPECT_EQ(listing.heading, "Rolling stock used in Coal run");
    ASSERT_EQ(listing.rows.size(), 2u);
    EXPECT_EQ(listing.rows[0], (std::vector<std::string>{"Hart\\Coal\\Locos\\Loco.bin", kDefaultStockMark}));
    EXPECT_EQ(listing.rows[1][1], "");
}

TEST(RouteStock, WagonNumbersSkipLongOnesAndJoinNeighbours) {
    const std::string xml = ScenarioXml({
        {"22003260432", "Hart", "Coal", "Locos\\Unit.xml", "Unit"},  // ten characters and more: left out
        {"101", "Hart", "Coal", "Locos\\Loco.xml", "Class 20"},
        {"102", "Hart", "Coal", "Locos\\LocoB.xml", "Class 20"},
        {"201", "Hart", "Coal", "Wagons\\Van.xml", "Van"},
        {"202", "Hart", "Coal", "Wagons\\Van.xml", "Van"},
    });
    const ReportListing listing = WagonNumberRows(xml, {"Hart\\Coal\\Locos\\Loco.bin"});
    EXPECT_EQ(listing.heading, "Rolling Stock Used in this Scenario:-");
    using Row = std::vector<std::string>;
    EXPECT_EQ(listing.rows, (std::vector<Row>{Row{"101 / 102", "Class 20", std::string(kDefaultStockMark) + " / "},
                                              Row{"201", "Van", ""}, Row{"202", "Van", ""}}));
}

TEST(RouteStock, MissingStockWritesTestCsvAndSkipsScenariosWithoutBin) {
    StockGame g;
    g.root.write("game/Assets/Hart/Coal/Wagons/VAN.BIN", "x");
    g.root.write("game/Assets/Hart/Coal/Wagons/Tank&Co.bin", "x");
    g.scenario("r1", "s1",
               {{"1", "Hart", "Coal", "Wagons\\Van.xml", "Van"},
                {"2", "Hart", "Coal", "Wagons\\Gone.xml", "Gone"},
                {"3", "Hart", "Coal", "Wagons\\Tank&amp;Co.xml", "Tank"}});
    g.scenario("r1", "s2", {{"4", "Hart", "Coal", "Wagons\\Gone.xml", "Gone"}});
    g.root.write("game/Content/Routes/r1/Scenarios/s3/ScenarioProperties.xml", "x");
    g.root.write("app/TempFiles/Test.csv", "old,row,from before\r\n");
    StockLoop loop;
    const ReportListing listing = ListMissingStock(
        g.ctx, {g.row("r1", "s1", "First"), g.row("r1", "s3", "Third"), g.row("r1", "s2", "Second")}, &loop);
    EXPECT_EQ(loop.scenariosRead, 2u);
    EXPECT_EQ(loop.skipped, 1u);
    EXPECT_FALSE(loop.aborted);
    ASSERT_EQ(listing.rows.size(), 2u);
    EXPECT_EQ(listing.rows[1], (std::vector<std::string>{"Hart\\Coal\\Wagons\\Gone.bin", "Route r1", "Second"}));
    EXPECT_EQ(g.root.read("app/TempFiles/Test.csv"),
              "Route r1,First,Hart\\Coal\\Wagons\\Gone.bin\r\nRoute r1,Second,Hart\\Coal\\Wagons\\Gone.bin\r\n");
    EXPECT_TRUE(g.ui.progressSteps.size() >= 3u);
}

TEST(RouteStock, AbortStopsBetweenScenarios) {
    StockGame g;
    g.scenario("r1", "s1", {{"1", "Hart", "Coal", "Wagons\\Van.xml", "Van"}});
    g.scenario("r1", "s2", {{"2", "Hart", "Coal", "Wagons\\Tank.xml", "Tank"}});
    g.ui.abortAt = 2;
    StockLoop loop;
    const ReportListing listing =
        ListRouteStock(g.ctx, "Route r1", {g.row("r1", "s1", "One"), g.row("r1", "s2", "Two")}, &loop);
    EXPECT_TRUE(loop.aborted);
    EXPECT_EQ(loop.scenariosRead, 1u);
    ASSERT_EQ(listing.rows.size(), 1u);
    EXPECT_EQ(listing.rows[0], (std::vector<std::string>{"Hart\\Coal\\Wagons\\Van.bin", "", "One", "s1"}));
    EXPECT_EQ(listing.heading, "Rolling Stock Used in Route r1");
}

TEST(RouteStock, AllRoutesSortedWithoutDuplicatesByCase) {
    StockGame g;
    const std::string props = "<DevString>g</DevString><DisplayName><English>Name</English></DisplayName>";
    g.root.write("game/Content/Routes/r1/Scenarios/s1/ScenarioProperties.xml", props);
    g.root.write("game/Content/Routes/r2/Scenarios/s2/ScenarioProperties.xml", props);
    g.scenario("r1", "s1",
               {{"1", "Hart", "Coal", "Wagons\\Van.xml", "Van"}, {"2", "Hart", "Coal", "Locos\\Loco.xml", "Loco"}});
    g.scenario("r2", "s2", {{"3", "hart", "coal", "wagons\\VAN.xml", "Van"}});
    RouteIndex index;
    index.routeName = {"One", "Two"};
    index.routeFolder = {"r1", "r2"};
    index.routeSlot = {"1", "2"};
    const ReportListing listing = ListAllRoutesStock(g.ctx, index);
    using Row = std::vector<std::string>;
    EXPECT_EQ(listing.rows, (std::vector<Row>{Row{"Hart\\Coal\\Locos\\Loco.bin"}, Row{"Hart\\Coal\\Wagons\\Van.bin"}}));

    const ScenarioListing all = ListAllScenarios(g.ctx, index);
    ASSERT_EQ(all.rows.size(), 2u);
    EXPECT_EQ(all.rows[0].routeFolder, "r1");
    EXPECT_EQ(all.rows[1].routeFolder, "r2");
    EXPECT_EQ(StockScenarios(all.rows, index)[1].routeName, "Two");
}

TEST(RouteStock, WagonNumbersReadNumberListsButNotOfVariants) {
    StockGame g;
    const std::string blueprint =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<cBlueprintLoader "
        "xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" "
        "d:version=\"1.0\">\r\n<Blueprint>\r\n<cWagonBlueprint>\r\n<RailVehicleComponent>\r\n"
        "<cRailVehicleComponentBlueprint>\r\n<CsvFile d:type=\"cDeltaString\">Hart\\Coal\\Wagons\\Numbers</CsvFile>\r\n"
        "</cRailVehicleComponentBlueprint>\r\n</RailVehicleComponent>\r\n</cWagonBlueprint>\r\n</Blueprint>\r\n"
        "</cBlueprintLoader>\r\n";
    g.binary("Assets/Hart/Coal/Wagons/Van.bin", blueprint);
    g.binary("Assets/Hart/Coal/Wagons/Van_MT.bin", blueprint);
    g.scenario("r1", "s1",
               {{"11", "Hart", "Coal", "Wagons\\Van.xml", "Van"},
                {"12", "Hart", "Coal", "Wagons\\Van_MT.xml", "Van empty"},
                {"13", "Hart", "Coal", "Wagons\\Absent.xml", "Absent"}});
    const ReportListing listing = ListWagonNumbers(g.ctx, "Route r1", {g.row("r1", "s1", "One")});
    using Row = std::vector<std::string>;
    EXPECT_EQ(listing.rows, (std::vector<Row>{Row{"11", "Van", "", "Hart\\Coal\\Wagons\\Numbers", "No lamps"},
                                              Row{"12", "Van empty", "", "", ""}, Row{"13", "Absent", "", "", ""}}));
    EXPECT_EQ(listing.suffix, "_Numbers.csv");
}

TEST(RouteStock, LampsOfAVehicleFromItsChildren) {
    auto blueprint = [](const std::string& name, const std::string& children) {
        return "<cEngineBlueprint>\r\n<Name d:type=\"cDeltaString\">" + name + "</Name>\r\n" + children +
               "\r\n</cEngineBlueprint>\r\n";
    };
    auto lamp = [](const std::string& model) {
        return "<cEntityContainerBlueprint-sChild>\r\n<BlueprintID d:type=\"cDeltaString\">Scenery\\Animated\\" +
               model + ".xml</BlueprintID>\r\n</cEntityContainerBlueprint-sChild>\r\n";
    };
    struct Case {
        std::string xml;
        std::string expected;
    };
    const Case cases[] = {
        {blueprint("Class 08", "<Children/>"), "No lamps"},
        {blueprint("Class 08_XP-Pass", "<Children>\r\n" + lamp("oillamp_white_drb") + lamp("OilLamp_White_DRB") +
                                           "</Children>"),
         "2 head lamps (Express Passenger)"},
        {blueprint("Van_light-engine", "<Children>\r\n" + lamp("oillamp_white_drb") + "</Children>"),
         "1 head lamp (Light Engine)"},
        {blueprint("Brake van", "<Children>\r\n" + lamp("Zugschlusslaterne") + "</Children>"), "1 tail lamp"},
        {blueprint("Both", "<Children>\r\n" + lamp("oillamp_white_drb") + lamp("Zugschlusslaterne") +
                               lamp("Zugschlusslaterne") + "</Children>"),
         "1 head lamp, 2 tail lamps"},
        // A lamp model named outside the children is no lamp of the vehicle.
        {blueprint("Loose", "<Other>oillamp_white_drb</Other>\r\n<Children/>"), "No lamps"},
    };
    for (const Case& c : cases) EXPECT_EQ(HasItLights(c.xml), c.expected) << c.xml;
}

TEST(RouteStock, ATruncatedScenarioIsToldAndPassedOver) {
    StockGame g;
    g.scenario("r1", "s1", {{"1", "Hart", "Coal", "Wagons\\Van.xml", "Van"}});
    g.scenario("r1", "s2", {{"2", "Hart", "Coal", "Wagons\\Tank.xml", "Tank"}});
    const fs::path s2 = g.root.path() / "game/Content/Routes/r1/Scenarios/s2/Scenario.bin";
    fs::resize_file(s2, fs::file_size(s2) / 2);
    StockLoop loop;
    const ReportListing listing =
        ListRouteStock(g.ctx, "Route r1", {g.row("r1", "s1", "First"), g.row("r1", "s2", "Second")}, &loop);
    EXPECT_EQ(loop.scenariosRead, 1u);
    EXPECT_EQ(loop.skipped, 1u);
    ASSERT_EQ(listing.rows.size(), 1u);
    EXPECT_EQ(listing.rows[0][0], "Hart\\Coal\\Wagons\\Van.bin");
    // The reader's reason reaches the person, naming the file.
    const auto texts = g.ui.texts();
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_NE(texts[0].find("Scenario.bin"), std::string::npos) << texts[0];
}

TEST(RouteStock, ScenarioItemsMessagesAndLists) {
    StockGame g;
    // No Scenario.bin: the command ends with the message.
    g.root.write("game/Content/Routes/r1/Scenarios/s0/ScenarioProperties.xml", "x");
    ScenarioItemLists lists = ListScenarioItems(g.ctx, "r1", {{"Zero", "d", "s0", "r1", ScenarioKind::Standard}});
    EXPECT_TRUE(lists.stopped);
    ASSERT_EQ(g.ui.texts().size(), 1u);
    EXPECT_EQ(g.ui.texts()[0], "There is no scenario.bin file in this folder.\noperation aborted.");

    // No stock: a Quick Drive scenario; no Scenery folder: the row that says so.
    g.ui.shown.clear();
    g.scenario("r1", "qd", {});
    g.scenario("r1", "s1", {{"1", "Hart", "Coal", "Wagons\\Van.xml", "Van"}});
    g.root.write("game/Content/Routes/r1/Scenarios/s1/Scenery/keep", "");
    lists = ListScenarioItems(g.ctx, "r1",
                              {{"Quick", "d", "qd", "r1", ScenarioKind::QuickDrive}, {"One", "d", "s1", "r1", {}}});
    EXPECT_FALSE(lists.stopped);
    ASSERT_EQ(g.ui.texts().size(), 2u);
    EXPECT_EQ(g.ui.texts()[0],
              "This appears to be a Quick Drive scenario, as such there\nis no rolling stock listed for the route.");
    // The Scenery folder of s1 holds no tile: the check says so.
    EXPECT_NE(g.ui.texts()[1].find("There are no Scenery files"), std::string::npos);
    ASSERT_EQ(lists.stock.size(), 1u);
    EXPECT_EQ(lists.stock[0].heading, "Rolling-stock used in One");
    ASSERT_EQ(lists.assets.size(), 2u);
    EXPECT_EQ(lists.assets[0].rows,
              (std::vector<std::vector<std::string>>{{"There was no Scenery file with this scenario"}}));
    EXPECT_EQ(lists.assets[1].heading, "Assets used in One");
    EXPECT_TRUE(lists.assets[1].rows.empty());
}

TEST(RouteStock, DuplicateRowsOnlyWhenEveryColumnIsEqual) {
    std::vector<std::vector<std::string>> rows{
        {"r2", "s", "P\\a.bin"}, {"r1", "s", "P\\a.bin"}, {"r2", "s", "P\\a.bin"},
        {"r2", "s", "P\\A.bin"}, {"r2", "s", "P\\a.bin"}, {"r1", "s"},
    };
    EXPECT_EQ(RemoveDuplicateRows(rows), 4u);
    using Row = std::vector<std::string>;
    EXPECT_EQ(rows, (std::vector<Row>{Row{"r1", "s"}, Row{"r1", "s", "P\\a.bin"}, Row{"r2", "s", "P\\A.bin"},
                                      Row{"r2", "s", "P\\a.bin"}}));
    std::vector<std::vector<std::string>> none;
    EXPECT_EQ(RemoveDuplicateRows(none), 0u);
}

std::string ConsistTemplate(int id, const std::string& name, const std::vector<std::string>& blueprints) {
    std::string xml = "<cConsistTemplate d:id=\"" + std::to_string(id) + "\">\r\n";
    if (!name.empty())
        xml += "<DisplayName>\r\n<Localisation-cUserLocalisedString>\r\n<English d:type=\"cDeltaString\">" + name +
               "</English>\r\n</Localisation-cUserLocalisedString>\r\n</DisplayName>\r\n";
    int entry = id * 10;
    for (const std::string& blueprint : blueprints)
        xml += "<cConsistTemplateEntry d:id=\"" + std::to_string(entry++) + "\">\r\n" +
               Ref("BlueprintID", "Hart", "Coal", blueprint) + "</cConsistTemplateEntry>\r\n";
    return xml + "</cConsistTemplate>\r\n";
}

TEST(RouteStock, ConsistTemplatesAgainstScenarioStock) {
    StockGame g;
    std::vector<std::string> lines{"stale"};
    EXPECT_FALSE(CheckConsistTemplates(g.ctx, {}, false, lines));
    EXPECT_TRUE(lines.empty());
    ASSERT_EQ(g.ui.texts().size(), 1u);
    EXPECT_NE(g.ui.texts()[0].find("ConsistTemplates.bin\ncan't be found"), std::string::npos);

    g.binary("Content/ConsistTemplates.bin",
             "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<cRecordSet xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" "
             "d:version=\"1.0\" d:id=\"1\">\r\n<Record>\r\n" +
                 ConsistTemplate(2, "Coal &amp; Co", {"Locos\\Loco.xml", "Wagons\\Van.xml"}) +
                 ConsistTemplate(3, "", {"Wagons\\Tank.xml", ""}) + "</Record>\r\n</cRecordSet>\r\n");
    const std::vector<std::string> scenarioStock{"HART\\coal\\locos\\loco.bin"};
    ASSERT_TRUE(CheckConsistTemplates(g.ctx, scenarioStock, false, lines));
    EXPECT_EQ(lines, (std::vector<std::string>{
                         "Hart\\Coal\\Locos\\Loco.bin found in Consist Coal & Co",
                         "Hart\\Coal\\Wagons\\Van.bin found in Consist Coal & Co is not used in any scenarios",
                         "Hart\\Coal\\Wagons\\Tank.bin found in Consist #2 is not used in any scenarios"}));
    ASSERT_TRUE(CheckConsistTemplates(g.ctx, scenarioStock, true, lines));
    EXPECT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].find("Van.bin"), std::string("Hart\\Coal\\Wagons\\").size());
}

TEST(RouteStock, RealScenarioOfTheTestRoute) {
#ifndef FERROLUND_TESTDATA
    GTEST_SKIP() << "FERROLUND_TESTDATA is not defined: the real game files are not available";
#else
    const fs::path routes = fs::path(FERROLUND_TESTDATA) / "routes";
    if (!fs::is_directory(routes)) GTEST_SKIP() << "no real routes in " << routes << ": skipped";
    StockGame g;
    std::size_t read = 0;
    for (const auto& route : fs::directory_iterator(routes)) {
        if (!fs::is_directory(route.path() / "Scenarios")) continue;
        for (const auto& scenario : fs::directory_iterator(route.path() / "Scenarios")) {
            std::string xml;
            ASSERT_FALSE(tools::SerzReadXml(g.ctx, (scenario.path() / "Scenario.bin").string(), xml));
            const std::vector<StockItem> stock = GetStock(xml);
            ASSERT_FALSE(stock.empty()) << scenario.path();
            for (const StockItem& item : stock) {
                EXPECT_EQ(item.path.substr(item.path.size() - 4), ".bin") << item.path;
                EXPECT_EQ(std::count(item.path.begin(), item.path.end(), '\\') >= 3, true) << item.path;
            }
            ++read;
        }
    }
    if (read == 0) GTEST_SKIP() << "no real scenario found below " << routes;

    // The whole loop on a copy of the real route's scenarios, in an installation without assets:
    // every blueprint is missing, and Test.csv has a line for each.
    for (const auto& route : fs::directory_iterator(routes)) {
        if (!fs::is_directory(route.path() / "Scenarios")) continue;
        const std::string folder = route.path().filename().string();
        const fs::path target = g.root.path() / "game" / "Content" / "Routes" / folder / "Scenarios";
        fs::create_directories(target);
        fs::copy(route.path() / "Scenarios", target, fs::copy_options::recursive);
        RouteIndex index;
        index.routeName = {"Real route"};
        index.routeFolder = {folder};
        index.routeSlot = {"1"};
        const ScenarioListing listed = ListScenarios(g.ctx.gameRoot(), folder);
        ASSERT_FALSE(listed.rows.empty()) << listed.note;
        const std::vector<StockScenario> scenarios = StockScenarios(listed.rows, index);
        EXPECT_EQ(scenarios[0].routeName, "Real route");
        StockLoop loop;
        const ReportListing used = ListRouteStock(g.ctx, "Real route", scenarios, &loop);
        EXPECT_EQ(loop.scenariosRead, listed.rows.size());
        EXPECT_EQ(loop.skipped, 0u);
        ASSERT_FALSE(used.rows.empty());
        const ReportListing missing = ListMissingStock(g.ctx, scenarios);
        EXPECT_EQ(missing.rows.size(), used.rows.size());
        const std::string csv = g.root.read("app/TempFiles/Test.csv");
        EXPECT_EQ(static_cast<std::size_t>(std::count(csv.begin(), csv.end(), '\n')), used.rows.size());
        EXPECT_EQ(csv.rfind("Real route," + listed.rows[0].name + ",", 0), 0u) << csv.substr(0, 200);
        break;
    }
#endif
}

TEST(RouteStock, RealGameScenarioNumbersAndStock) {
#ifndef FERROLUND_TESTDATA
    GTEST_SKIP() << "FERROLUND_TESTDATA is not defined: the real game files are not available";
#else
    const fs::path bin = fs::path(FERROLUND_TESTDATA) / "serz" / "scenario-game.bin";
    if (!fs::exists(bin)) GTEST_SKIP() << bin << " is absent: skipped";
    StockGame g;
    std::string xml;
    ASSERT_FALSE(tools::SerzReadXml(g.ctx, bin.string(), xml));
    const ReportListing numbers = WagonNumberRows(xml, {});
    // Numbers of ten characters and more are left out, so fewer rows than vehicles.
    ASSERT_FALSE(numbers.rows.empty());
    EXPECT_LT(numbers.rows.size(), GetStock(xml).size());
    for (const auto& row : numbers.rows) {
        EXPECT_LE(row[0].size(), 9u) << row[0];  // no two neighbours differ in their (empty) flags
        EXPECT_FALSE(row[1].empty()) << row[0];
    }
    const ReportListing stock = ScenarioStockRows(xml, {}, "Game");
    ASSERT_FALSE(stock.rows.empty());
    for (std::size_t r = 1; r < stock.rows.size(); ++r)
        EXPECT_NE(tools::UpperCp1252(stock.rows[r][0]), tools::UpperCp1252(stock.rows[r - 1][0]));
#endif
}

}  // namespace
}  // namespace ferrolund::routes
