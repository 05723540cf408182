#include "archives/report_grid.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/scripted_ui.h"
#include "tools/codepage.h"
#include "support/temp_folder.h"
#include "zip_fixture.h"

namespace ferrolund::archives {
namespace {

namespace fs = std::filesystem;
using Rows = std::vector<std::vector<std::string>>;

TEST(ReportGrid, DuplicatesDifferingOnlyInCaseGoAndTheFirstTwoColumnsStay) {
    ReportGrid grid;
    grid.takeList("b\\x.bin\tone\textra\r\nA\\y.bin\ttwo\r\nB\\X.BIN\tthree\r\na\\y.bin\tfour\r\n\r\nc.bin\r\n");
    ASSERT_EQ(grid.rowCount(), 5u);
    grid.removeDuplicates();
    EXPECT_TRUE(grid.duplicatesRemoved);
    EXPECT_EQ(grid.table.rows, (Rows{{"A\\y.bin", "two"}, {"b\\x.bin", "one"}, {"c.bin"}}));
}

TEST(ReportGrid, DuplicateRemovalMatchesComparingEveryPair) {
    // The rule as first written: sort, then blank every later row equal to an earlier one.
    ReportGrid grid;
    Rows rows;
    for (int i = 0; i < 300; ++i) {
        const std::string name = "P" + std::to_string(i % 7) + "\\Item" + std::to_string(i % 5) + ".bin";
        rows.push_back({i % 2 ? name : tools::UpperCp1252(name), std::to_string(i)});
    }
    grid.setRows(rows);
    grid.sortOn(0);
    Rows sorted = grid.table.rows;
    std::vector<bool> blank(sorted.size(), false);
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        for (std::size_t j = i + 1; j < sorted.size(); ++j) {
            if (!blank[i] && tools::UpperCp1252(sorted[i][0]) == tools::UpperCp1252(sorted[j][0])) blank[j] = true;
        }
    }
    Rows expected;
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        if (!blank[i]) expected.push_back(sorted[i]);
    }
    grid.removeDuplicates();
    EXPECT_EQ(grid.table.rows, expected);
    EXPECT_EQ(grid.rowCount(), 35u);
}

TEST(ReportGrid, LocationListKeepsEveryPlaceOfAnAssetOnce) {
    ReportGrid grid;
    grid.takeList("K\\oak.bin\tat +000001+000002\r\nK\\elm.bin\tat +000001+000002\r\n"
                  "K\\OAK.BIN\tAT +000001+000002\r\nK\\oak.bin\tat -000003+000000\r\n"
                  "K\\oak.bin\tat +000001+000002\r\n");
    grid.missing = {false, false, true, true, false};  // the third and fourth rows are missing items
    grid.removeDuplicates(true);
    EXPECT_EQ(grid.missing, (std::vector<bool>{false, false, true}));
    EXPECT_EQ(grid.table.rows, (Rows{{"K\\elm.bin", "at +000001+000002"},
                                     {"K\\oak.bin", "at +000001+000002"},
                                     {"K\\oak.bin", "at -000003+000000"}}));
}

struct StockTest : ::testing::Test {
    testing::TempFolder root;
    testing::ScriptedUi ui;
    app::AppContext ctx;
    StockTest() {
        ctx.prefs.gameRoot = root.system();
        ctx.ui = &ui;
        root.write("Assets/Kuju/RailSimulator/RailVehicles/Loco.bin", "x");
        root.write("Assets/Kuju/RailSimulator/RailVehicles/A&B.bin", "x");
    }
};

TEST_F(StockTest, RowsWhoseBlueprintExistsGoTheOthersStayMarked) {
    ReportGrid grid;
    grid.mode = kModeRouteItems;
    // Another case of the provider, an entity that FixEntities turns into the file's name, a missing one.
    grid.takeList("KUJU\\railsimulator\\RailVehicles\\Loco.xml\r\n"
                  "Kuju\\RailSimulator\\RailVehicles\\A&amp;B.xml\r\n"
                  "Kuju\\RailSimulator\\RailVehicles\\Gone.xml\r\n");
    EXPECT_EQ(grid.checkMissingStock(ctx), 1u);
    EXPECT_EQ(grid.cell(0, 0), "Kuju\\RailSimulator\\RailVehicles\\Gone.xml");
    EXPECT_TRUE(grid.missing[0]);
}

TEST_F(StockTest, InModeSixteenEveryCopyOfAFoundRowGoes) {
    ReportGrid grid;
    grid.mode = kModeMissingInScenarios;
    grid.takeList("Kuju\\RailSimulator\\RailVehicles\\Loco.xml\r\nGone.xml\r\nKuju\\RailSimulator\\RailVehicles\\Loco.xml\r\n");
    EXPECT_EQ(grid.checkMissingStock(ctx), 1u);
    EXPECT_EQ(grid.cell(0, 0), "Gone.xml");
}

TEST(ReportGrid, ProvidersAndProductsOncePerPairRowsOutsideAssetsPassedOver) {
    ReportGrid grid;
    grid.takeList("C:\\RW\\Assets\\Kuju\\Rail\\a.bin\r\nC:\\RW\\assets\\KUJU\\RAIL\\b.bin\r\nC:\\RW\\Content\\x.bin\r\n"
                  "C:\\RW\\Assets\\Other\\Set\\c.bin\r\nC:\\RW\\Assets\\Lonely\r\n");
    grid.listProvidersAndProducts();
    EXPECT_EQ(grid.table.rows, (Rows{{"Kuju\\Rail"}, {"Other\\Set"}}));
}

TEST(ReportGrid, FindMovesOnAndTakesEitherCaseOfTheFirstLetter) {
    ReportGrid grid;
    grid.takeList("alpha\r\nBravo\r\nbravo two\r\nBRAVO\r\n");
    EXPECT_EQ(grid.find("bravo"), 1u);
    EXPECT_EQ(grid.find("bravo"), 2u);
    EXPECT_EQ(grid.find("bravo"), std::nullopt);  // "BRAVO" differs beyond the first letter
    EXPECT_EQ(grid.find(""), std::nullopt);
}

TEST(ReportGrid, SortMainContentClearAndTheClipboardText) {
    ReportGrid grid;
    grid.table.headings = {"File", "Size", "Date"};
    grid.takeList("C:\\b\\MainContent.ap\t10\t2020-01-02\r\nC:\\a\\Other.ap\t5\t2021-01-01\r\nC:\\c\\maincontent.AP\t1\t2019-01-01\r\n");
    EXPECT_EQ(grid.mainContentRows(), (std::vector<std::size_t>{0, 2}));
    grid.sortOn(2);
    EXPECT_EQ(grid.cell(0, 0), "C:\\c\\maincontent.AP");
    grid.sortOn(0);
    EXPECT_EQ(grid.cell(0, 0), "C:\\a\\Other.ap");
    EXPECT_EQ(grid.rowText(0), "C:\\a\\Other.ap\t5\t2021-01-01");
    grid.clear();
    EXPECT_EQ(grid.rowCount(), 0u);
    EXPECT_EQ(grid.table.headings.size(), 3u);
}

TEST(ReportTable, TheThreeFormsAndCommaTextReadBack) {
    testing::TempFolder root;
    services::ReportTable table{{"Item", "Note"}, {{"a,b", "say \"hi\""}, {"Caf\xe9", ""}}};
    EXPECT_EQ(services::CsvText(table), "Item,Note\r\n\"a,b\",\"say \"\"hi\"\"\"\r\nCaf\xe9,\r\n");
    EXPECT_EQ(services::TabText(table), "Item\tNote\r\na,b\tsay \"hi\"\r\nCaf\xe9\t\r\n");
    const services::ReportTable back = services::ParseCsv(services::CsvText(table));
    EXPECT_EQ(back.headings, table.headings);
    EXPECT_EQ(back.rows, table.rows);
    for (const char* name : {"r.csv", "r.txt", "r.TAB", "r.xls"}) {
        EXPECT_FALSE(services::SaveReportTable(root.system() + "\\" + name, table)) << name;
    }
    EXPECT_EQ(testing::ReadFile(root.path() / "r.TAB"), services::TabText(table));
    const std::string xls = testing::ReadFile(root.path() / "r.xls");
    EXPECT_EQ(xls.substr(0, 2), std::string("\x09\x08", 2));
    EXPECT_TRUE(services::SaveReportTable(root.system() + "\\missing\\r.csv", table));
}

TEST(ReportTable, TheSpreadsheetOpensInLibreOffice) {
    if (!testing::HaveProgram("soffice")) GTEST_SKIP() << "LibreOffice (soffice) is not installed here";
    testing::TempFolder root;
    services::ReportTable table{{"File", "Folder"}, {{"MainContent.ap", "C:\\RW\\Assets\\Kuju"}, {"Caf\xe9.bin", "x"}}};
    ASSERT_FALSE(services::SaveReportTable(root.system() + "\\sheet.xls", table));
    const std::string out = root.path().string();
    ASSERT_EQ(testing::Shell("cd '" + out + "' && HOME='" + out + "' timeout 120 soffice --headless --convert-to csv "
                             "sheet.xls --outdir '" + out + "' > /dev/null 2>&1"),
              0);
    const std::string csv = testing::ReadFile(root.path() / "sheet.csv");
    EXPECT_NE(csv.find("MainContent.ap,C:\\RW\\Assets\\Kuju"), std::string::npos) << csv;
    // LibreOffice writes comma text in the Windows code page too.
    EXPECT_NE(csv.find("Caf\xe9.bin"), std::string::npos) << csv;
}

TEST(FindArchives, ListsEveryArchiveWithSizeAndDate) {
    testing::TempFolder root;
    testing::ScriptedUi ui;
    app::AppContext ctx;
    ctx.ui = &ui;
    testing::MakeZip(root.path() / "Assets/P/Q/MainContent.ap", {{"a.txt", "a"}});
    testing::MakeZip(root.path() / "Content/Routes/R/Other.AP", {{"b.txt", "b"}});
    root.write("Assets/P/Q/notes.txt", "n");
    std::vector<std::string> overlength;
    ReportGrid grid = FindArchives(ctx, {root.system()}, overlength);
    EXPECT_EQ(grid.mode, kModeApList);
    ASSERT_EQ(grid.rowCount(), 2u);
    EXPECT_NE(grid.cell(0, 0).find("MainContent.ap"), std::string::npos);
    EXPECT_EQ(grid.cell(0, 1), std::to_string(fs::file_size(root.path() / "Assets/P/Q/MainContent.ap")));
    EXPECT_EQ(grid.cell(0, 2).size(), 16u);
    EXPECT_TRUE(overlength.empty());
    grid = FindArchives(ctx, {root.system(), "MainContent.ap"}, overlength);
    EXPECT_EQ(grid.rowCount(), 1u);
}

TEST(ReportGeometry, DefaultsWhenTheSettingsHoldNothing) {
    app::AppContext ctx;
    TwipsGeometry g = ReportGeometry(ctx.prefs);
    EXPECT_EQ(g.left, 2000);
    EXPECT_EQ(g.width, 19000);
    StoreReportGeometry(ctx, {100, 200, 9000, 7000});
    g = ReportGeometry(ctx.prefs);
    EXPECT_EQ(g.top, 200);
    EXPECT_EQ(g.height, 7000);
}

}  // namespace
}  // namespace ferrolund::archives
