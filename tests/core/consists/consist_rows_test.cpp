#include "consists/consist_rows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "services/report_table.h"
#include "support/temp_folder.h"

namespace ferrolund::consists {
namespace {

TemplateRow Row(const std::string& name, const std::string& blueprint, const std::string& flipped = "0") {
    return {name, "KEY-" + name, "ID-" + name, "Prov", "Prod", blueprint, flipped, "E-" + blueprint};
}

std::vector<TemplateRow> Sample() {
    return {Row("Coal", "Loco.xml"), Row("Coal", "Hopper.xml", "1"), Row("Güterzug", "Tank.xml", "x")};
}

const std::vector<assets::AssetRow> kStock = {
    {"Ostvale", "NorthernLines", "RailVehicles\\Box.bin", "Box van", "Yes", "Freight Wagon", "WagonBlueprint", "1"},
    {"Ostvale", "NorthernLines", "RailVehicles\\Flat.BIN", "Flat", "Yes", "Freight Wagon", "WagonBlueprint", "2"},
};

std::vector<std::string> Blueprints(const std::vector<TemplateRow>& rows) {
    std::vector<std::string> out;
    for (const auto& row : rows) out.push_back(row.blueprintId);
    return out;
}

TEST(ConsistRows, StockBecomesAnUnflippedEntryWithItsXmlBlueprintAndAFreshId) {
    const TemplateRow row = EntryFor(kStock[1], {"Flats", "K", "123456789"});
    EXPECT_EQ(row, (TemplateRow{"Flats", "K", "123456789", "Ostvale", "NorthernLines", "RailVehicles\\Flat.xml", "0",
                                row.entryId}));
    EXPECT_EQ(row.entryId.size(), 9u);
    const ConsistIdentity made = NewConsistIdentity("New");
    EXPECT_EQ(made.consistId.size(), 9u);
    EXPECT_EQ(made.key.size(), 36u);
}

TEST(ConsistRows, InsertedStockJoinsTheSelectedRowsConsistBehindIt) {
    std::vector<TemplateRow> rows = Sample();
    const std::vector<std::size_t> added = InsertAfter(rows, 0, kStock, 2);
    EXPECT_EQ(added, (std::vector<std::size_t>{1, 2, 3, 4}));
    EXPECT_EQ(Blueprints(rows), (std::vector<std::string>{"Loco.xml", "RailVehicles\\Box.xml", "RailVehicles\\Flat.xml",
                                                          "RailVehicles\\Box.xml", "RailVehicles\\Flat.xml",
                                                          "Hopper.xml", "Tank.xml"}));
    std::set<std::string> ids;
    for (std::size_t r : added) {
        EXPECT_EQ(rows[r].name, "Coal");
        EXPECT_EQ(rows[r].key, "KEY-Coal");
        EXPECT_EQ(rows[r].consistId, "ID-Coal");
        ids.insert(rows[r].entryId);
    }
    EXPECT_EQ(ids.size(), 4u);
    EXPECT_TRUE(InsertAfter(rows, 99, kStock).empty());
}

TEST(ConsistRows, ReplacedRowsGiveWayToTheStockInTheirOwnConsists) {
    std::vector<TemplateRow> rows = Sample();
    EXPECT_EQ(ReplaceRows(rows, {2, 0}, {kStock[0]}), (std::vector<std::size_t>{0, 2}));
    EXPECT_EQ(Blueprints(rows), (std::vector<std::string>{"RailVehicles\\Box.xml", "Hopper.xml", "RailVehicles\\Box.xml"}));
    EXPECT_EQ(rows[2].name, "Güterzug");
    EXPECT_EQ(rows[2].key, "KEY-Güterzug");
    rows = Sample();
    EXPECT_EQ(ReplaceRows(rows, {1}, kStock), (std::vector<std::size_t>{1, 2}));
    EXPECT_EQ(rows.size(), 4u);
    EXPECT_EQ(rows[3].blueprintId, "Tank.xml");
}

TEST(ConsistRows, DeleteFlipAndRenameTouchTheSelectedRowsOnly) {
    std::vector<TemplateRow> rows = Sample();
    FlipRows(rows, {0, 1, 2, 7});
    EXPECT_EQ(rows[0].flipped, "1");
    EXPECT_EQ(rows[1].flipped, "0");
    EXPECT_EQ(rows[2].flipped, "x");
    RenameRows(rows, {1}, "Split");
    EXPECT_EQ(rows[0].name, "Coal");
    EXPECT_EQ(rows[1].name, "Split");
    EXPECT_EQ(ConsistSpans(rows).size(), 3u);
    DeleteRows(rows, {2, 0, 2, 9});
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].name, "Split");
}

TEST(ConsistRows, SearchGoesOnFromTheRowAfterTheCurrentOne) {
    std::vector<TemplateRow> rows = Sample();
    rows.push_back(Row("Merlin &amp; coaches", "Merlin.xml"));
    struct Case {
        const char* text;
        std::optional<std::size_t> current;
        std::optional<std::size_t> found;
    };
    const Case cases[] = {
        {"coal", std::nullopt, 0}, {"COAL", 0, 1},         {"coal", 1, std::nullopt},
        {"GÜTER", std::nullopt, 2}, {"güterzug", 2, std::nullopt}, {"& co", std::nullopt, 3},
        {"", std::nullopt, std::nullopt},
    };
    for (const Case& c : cases) EXPECT_EQ(FindName(rows, c.text, c.current), c.found) << c.text;
    EXPECT_EQ(FindStockName(kStock, "flat", 0), 1u);
    EXPECT_EQ(FindStockName(kStock, "box", 0), std::nullopt);
}

struct DrawCase {
    const char* name;
    std::size_t pool;
    long wagons;
    long randomness;
    std::size_t count;
    std::function<bool(const std::vector<std::size_t>&)> holds;
};

class GenerateDrawsTest : public ::testing::TestWithParam<DrawCase> {};

TEST_P(GenerateDrawsTest, DrawsFollowTheRandomness) {
    const DrawCase& c = GetParam();
    const std::vector<std::size_t> draws = GenerateDraws(c.pool, c.wagons, c.randomness, SeededRandom(7));
    ASSERT_EQ(draws.size(), c.count);
    for (std::size_t d : draws) EXPECT_LT(d, std::max<std::size_t>(c.pool, 1));
    if (c.holds) {
        EXPECT_TRUE(c.holds(draws)) << ::testing::PrintToString(draws);
    }
    EXPECT_EQ(draws, GenerateDraws(c.pool, c.wagons, c.randomness, SeededRandom(7))) << "the same seed, the same draws";
}

bool AllIn(const std::vector<std::size_t>& draws, std::size_t first, std::size_t last, std::size_t from = 0,
           std::size_t to = SIZE_MAX) {
    for (std::size_t i = from; i < std::min(to, draws.size()); ++i)
        if (draws[i] < first || draws[i] > last) return false;
    return true;
}

bool AllSame(const std::vector<std::size_t>& draws) {
    return std::adjacent_find(draws.begin(), draws.end(), std::not_equal_to<>()) == draws.end();
}

INSTANTIATE_TEST_SUITE_P(
    ConsistRows, GenerateDrawsTest,
    ::testing::Values(
        DrawCase{"OneWagonIsOneFirstHalfDraw", 10, 1, 5, 1, [](const auto& d) { return AllIn(d, 0, 3); }},
        DrawCase{"HalvesOfTheFirstAndSecondPart", 10, 6, 3, 6,
                 [](const auto& d) { return AllIn(d, 0, 3, 0, 4) && AllIn(d, 4, 8, 4); }},
        DrawCase{"ASmallPoolDrawsItsFirstRowInTheFirstHalf", 2, 7, 9, 7, [](const auto& d) { return AllIn(d, 0, 0, 0, 4); }},
        DrawCase{"AOneRowPool", 1, 3, 5, 3, [](const auto& d) { return AllIn(d, 0, 0); }},
        DrawCase{"ZeroIsABlockTrain", 10, 12, 0, 12, AllSame},
        DrawCase{"TenDrawsOverTheWholePool", 4, 60, 10, 60,
                 [](const auto& d) { return std::set<std::size_t>(d.begin(), d.end()).size() == 4; }},
        DrawCase{"ElevenDrawsNothing", 10, 5, 11, 0, nullptr},
        DrawCase{"BelowZeroDrawsNothing", 10, 5, -1, 0, nullptr},
        DrawCase{"AnEmptyPoolDrawsNothing", 0, 5, 10, 0, nullptr},
        DrawCase{"NoWagonsDrawNothing", 10, 0, 5, 0, nullptr}),
    [](const ::testing::TestParamInfo<DrawCase>& info) { return std::string(info.param.name); });

TEST(ConsistRows, BoxesReadAsWholeNumbers) {
    const std::pair<const char*, long> cases[] = {{"12", 12}, {" 7 wagons", 7}, {"3.9", 3}, {"", 0}, {"x", 0}, {"-2", -2}};
    for (const auto& [text, value] : cases) EXPECT_EQ(WholeNumber(text), value) << text;
}

TEST(ConsistRows, PoolsAreReadInEachSavedForm) {
    ::ferrolund::testing::TempFolder folder;
    services::ReportTable table;
    table.headings = {"Provider", "Product", "Path", "Name", "In Scene", "Category", "Blueprint", "Index"};
    table.rows = {{"Ostvale", "NorthernLines", "RailVehicles\\Box.bin", "Box van", "Yes", "Freight Wagon", "WagonBlueprint", "1"},
                  {"Provider", "Product", "Path", "Name", "In Scene", "Category", "Blueprint", "Index"},
                  {"Müller", "Straßenbahn", "RailVehicles\\Vůz.bin", "Vůz", "Yes", "Freight Wagon", "WagonBlueprint", "2"}};
    for (const char* form : {"pool.csv", "pool.txt", "pool.tab", "pool.xls"}) {
        const std::string path = (folder.path() / form).string();
        ASSERT_FALSE(services::SaveReportTable(path, table)) << form;
        std::vector<assets::AssetRow> rows;
        ASSERT_FALSE(ReadStockList(path, rows)) << form;
        ASSERT_EQ(rows.size(), 2u) << form;
        EXPECT_EQ(rows[1].provider, "Müller") << form;
        EXPECT_EQ(rows[1].path, "RailVehicles\\Vůz.bin") << form;
    }
    std::vector<assets::AssetRow> rows;
    EXPECT_TRUE(ReadStockList((folder.path() / "pool.doc").string(), rows));
    EXPECT_TRUE(ReadStockList((folder.path() / "absent.csv").string(), rows));
}

}  // namespace
}  // namespace ferrolund::consists
