#include "assets/list_grid.h"

#include <gtest/gtest.h>

#include "assets/asset_row.h"
#include "support/temp_folder.h"

namespace ferrolund::assets {
namespace {

ListGrid Sample() {
    ListGrid grid({kAssetHeadings.begin(), kAssetHeadings.end()});
    grid.append(std::vector<std::vector<std::string>>{
        {"Ostvale", "NorthernLines", "RailVehicles\\Diesel\\Class58\\Engine\\Class58.bin", "Ostvale Class 58 Diesel",
         "Yes", "Diesel", "EngineBlueprint", "1"},
        {"ČeskéDráhy", "Nádraží", "RailVehicles\\Wagons\\Vůz\\Vůz.bin", "élan wagon", "Yes", "Freight Wagon",
         "WagonBlueprint", "2"},
        {"Müller", "Straßenbahn", "RailVehicles\\Tram\\Engine\\Tram.bin", "Élan tram", "Yes", "Electric",
         "EngineBlueprint", "3"},
        {"Ostvale", "NorthernLines", "Scenery\\Hut.bin", "hut class 58", "No", "Scenery", "EntityContainerBlueprint",
         "4"}});
    return grid;
}

TEST(ListGrid, FindTakesTheFirstLetterInEitherCaseAndTheRestAsTyped) {
    struct Case {
        const char* text;
        std::size_t column;
        std::vector<std::size_t> hits;
    } cases[] = {
        {"class 58", 3, {0, 3}},     // "Class" and "class"
        {"CLASS 58", 3, {}},         // only the first letter may differ
        {"élan", 3, {1, 2}},         // an accented first letter, in both cases
        {"Élan", 3, {1, 2}},
        {"Straße", 1, {2}},
        {"straße", 1, {2}},
        {"Freight", 5, {1}},
        {"ček", 0, {}},              // the rest is exact: "Če" is not "če" followed by "k"
        {"česk", 0, {1}},
        {"(", 3, {}},                // a bracket is a letter like the others, not a pattern
    };
    ListGrid grid = Sample();
    for (const Case& c : cases) EXPECT_EQ(grid.matchingRows(c.text, c.column), c.hits) << c.text;
}

TEST(ListGrid, FindFirstInstanceMovesOnAndStartsAgainForANewText) {
    ListGrid grid = Sample();
    EXPECT_EQ(grid.findFirstInstance("Ostvale", 0), 0u);
    EXPECT_EQ(grid.findFirstInstance("Ostvale", 0), 3u);
    EXPECT_EQ(grid.findFirstInstance("Ostvale", 0), std::nullopt);
    EXPECT_EQ(grid.findFirstInstance("Müller", 0), 2u);
    EXPECT_EQ(grid.findFirstInstance("Ostvale", 0), 0u);
}

TEST(ListGrid, ShowAllKeepsOnlyTheMatchingRows) {
    ListGrid grid = Sample();
    EXPECT_EQ(grid.keepMatching("Yes", 4), 3u);
    EXPECT_EQ(grid.cell(2, 3), "Élan tram");
    EXPECT_EQ(grid.keepMatching("nothing like it", 3), 0u);
    EXPECT_EQ(grid.headings().size(), kAssetColumns);
}

TEST(ListGrid, RemoveRowsTakesAnyOrderAndIgnoresRepeatsAndStrays) {
    ListGrid grid = Sample();
    grid.removeRows({3, 0, 3, 17});
    ASSERT_EQ(grid.rowCount(), 2u);
    EXPECT_EQ(grid.cell(0, 7), "2");
    EXPECT_EQ(grid.cell(1, 7), "3");
}

TEST(ListGrid, EveryFormSavesAndLoadsBackTheSameRowsAndRestoreReadsItAgain) {
    testing::TempFolder folder;
    for (const char* name : {"list.csv", "list.txt", "list.tab", "list.xls", "LIST.CSV"}) {
        ListGrid grid = Sample();
        grid.setHidden(2, true);  // hidden columns are saved all the same
        const std::string path = folder.system() + "/" + name;
        ASSERT_FALSE(grid.save(path)) << name;
        ListGrid loaded({kAssetHeadings.begin(), kAssetHeadings.end()});
        ASSERT_FALSE(loaded.load(path)) << name;
        EXPECT_EQ(loaded.rows(), grid.rows()) << name;
        loaded.clear();
        ASSERT_FALSE(loaded.restore()) << name;
        EXPECT_EQ(loaded.rowCount(), 4u) << name;
        EXPECT_EQ(loaded.restoreFile(), path);
    }
}

TEST(ListGrid, BadFilesAndEndingsGiveAMessageAndLeaveTheList) {
    testing::TempFolder folder;
    ListGrid grid = Sample();
    EXPECT_TRUE(grid.save(folder.system() + "/list.doc"));
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "list.doc"));
    EXPECT_TRUE(grid.load(folder.system() + "/absent.csv"));
    folder.write("broken.xls", "this is not a worksheet");
    EXPECT_TRUE(grid.load(folder.system() + "/broken.xls"));
    EXPECT_EQ(grid.rowCount(), 4u);
    EXPECT_TRUE(ListGrid().restore());
}

TEST(ListGrid, ClipboardTakesTheChosenRowsTabSeparated) {
    ListGrid grid = Sample();
    EXPECT_EQ(grid.clipboardText({2, 9}),
              "Müller\tStraßenbahn\tRailVehicles\\Tram\\Engine\\Tram.bin\tÉlan tram\tYes\tElectric\tEngineBlueprint\t3\r\n");
}

}  // namespace
}  // namespace ferrolund::assets
