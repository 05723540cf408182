// The asset check on files the game and its users made.
#include <gtest/gtest.h>

#include <set>

#include "asset_check_fixture.h"
#include "assets/file_check.h"
#include "assets/where_used.h"
#include "routes/route_stock.h"
#include "tools/codepage.h"
#include "tools/serz_convert.h"

namespace ferrolund::assets::checks {
namespace {

const fs::path kSerz = fs::path(FERROLUND_TESTDATA) / "serz";

TEST(AssetCheckRealFiles, AScenerySBlueprintMissesItsModel) {
    if (!fs::exists(kSerz / "scenery-item.bin")) GTEST_SKIP() << "the real blueprint is not in " << FERROLUND_TESTDATA;
    Installation g;
    g.root.write("game/Assets/AP/VegEP/Scenery/Trees/Beech1.bin", tools::ReadTextFile((kSerz / "scenery-item.bin").string()));
    const AssetRow row = Row("AP", "VegEP", "Scenery\\Trees\\Beech1.bin");
    const CheckOutcome missing = CheckRows(g.ctx, {row}, RowReport::MissingFiles, AssetListRows(g.ctx, RowReport::MissingFiles));
    // The model by both spellings; its empty references and collision model are no files.
    EXPECT_EQ(Lines(missing.report), (std::vector<std::string>{
                                         "Checking: " + g.asset("AP\\VegEP\\Scenery\\Trees\\Beech1.bin"), "Missing Files:-",
                                         g.asset("AP\\VegEP\\Scenery\\Trees\\Beech1\\tree.GeoPcDx"),
                                         g.asset("AP\\VegEP\\Scenery\\Trees\\Beech1\\tree.geopcdx"), ""}));

    g.root.write("game/Assets/AP/VegEP/Scenery/Trees/Beech1/TREE.GeoPcDx", tools::ReadTextFile((kSerz / "scenery-item.bin").string()));
    EXPECT_EQ(CheckRows(g.ctx, {row}, RowReport::MissingFiles, AssetListRows(g.ctx, RowReport::MissingFiles)).report,
              "No errors found");
}

TEST(AssetCheckRealFiles, AGameScenarioNamesItsStock) {
    if (!fs::exists(kSerz / "scenario-game.bin")) GTEST_SKIP() << "the real scenario is not in " << FERROLUND_TESTDATA;
    Installation g;
    const std::string scenarios = "game/Content/Routes/R/Scenarios/";
    g.root.write(scenarios + "S/Scenario.bin", tools::ReadTextFile((kSerz / "scenario-game.bin").string()));
    g.root.write(scenarios + "S/ScenarioProperties.xml", "<DevString>g</DevString><DisplayName><English>Freight</English></DisplayName>");
    std::string xml;
    ASSERT_FALSE(tools::SerzReadXml(g.ctx, g.root.system() + "/" + scenarios + "S/Scenario.bin", xml));
    const std::vector<routes::StockItem> stock = routes::GetStock(xml);
    ASSERT_FALSE(stock.empty());
    // Every vehicle the scenario names, asked for in upper case with the other ending.
    std::vector<AssetRow> rows;
    std::set<std::string> keys;
    for (const routes::StockItem& item : stock) {
        const std::size_t a = item.path.find('\\'), b = item.path.find('\\', a + 1);
        std::string path = item.path.substr(b + 1);
        path = path.substr(0, path.size() - 3) + "XML";
        AssetRow row = Row(tools::UpperCp1252(item.path.substr(0, a)), item.path.substr(a + 1, b - a - 1), path);
        if (keys.insert(ReferenceKey(row.provider, row.product, row.path)).second) rows.push_back(row);
    }
    const std::size_t vehicles = rows.size();
    ASSERT_GT(vehicles, 3u);
    rows.push_back(Row("AP", "Class37Pack01", "RailVehicles\\Nowhere.bin"));
    const WhereUsedOutcome outcome = WhereIsItUsed(g.ctx, rows);
    EXPECT_EQ(outcome.scenariosRead, 1u);
    EXPECT_EQ(outcome.uses, vehicles);
    const std::vector<std::string> lines = Lines(outcome.report);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "  Route: R - Scenario: Freight (S)"), static_cast<long>(vehicles));
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "  Not used in any scenario or PreLoad consist"), 1);
}

}  // namespace
}  // namespace ferrolund::assets::checks
