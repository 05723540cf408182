#include "assets/content_list.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>

#include "core/routes/location_test_support.h"
#include "tools/host_path.h"
#include "services/report_table.h"

namespace ferrolund::assets {
namespace {

namespace fs = std::filesystem;
using testing::LocationGame;

std::string Properties(const std::string& root, const std::string& english, const std::string& german = {}) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<" + root +
           ">\n<DisplayName>\n<Localisation-cUserLocalisedString>\n<English d:type=\"cDeltaString\">" + english +
           "</English>\n<French d:type=\"cDeltaString\"></French>\n<German d:type=\"cDeltaString\">" + german +
           "</German>\n</Localisation-cUserLocalisedString>\n</DisplayName>\n</" + root + ">\n";
}

// The rows without their numbers, as a set: the walk's order is the disk's.
std::set<std::vector<std::string>> Rows(const ContentList& list) {
    std::set<std::vector<std::string>> rows;
    for (const ContentRow& row : list.rows) rows.insert({row.routeName, row.subFolder, row.subFolder2, row.fileName});
    return rows;
}

std::vector<std::string> Numbers(const ContentList& list) {
    std::vector<std::string> numbers;
    for (const ContentRow& row : list.rows) numbers.push_back(row.index);
    return numbers;
}

TEST(PlaceOfContent, CutsPathsAsTheListShowsThem) {
    const std::string game = "/tmp/Steam Content/RailWorks";
    struct Case {
        const char* label;
        std::string path;
        bool valid;
        std::string routeFolder, scenarioFolder, subFolder, subFolder2, fileName;
    };
    const std::string routes = game + "\\Content\\Routes\\";
    const Case cases[] = {
        {"a scenario's file", routes + "R1\\Scenarios\\S1\\Scenario.bin", true, routes + "R1", routes + "R1\\Scenarios\\S1",
         "R1", "Scenarios\\S1", "Scenario.bin"},
        {"a file of the route's own folder", routes + "R1\\RouteProperties.xml", true, routes + "R1", "", "R1", "",
         "RouteProperties.xml"},
        {"two folders deep", routes + "R1\\Networks\\Track Tiles\\+000000+000000.bin", true, routes + "R1", "", "R1",
         "Networks\\Track Tiles", "+000000+000000.bin"},
        {"a file of the scenarios folder itself", routes + "R1\\Scenarios\\notes.txt", true, routes + "R1", "", "R1",
         "Scenarios", "notes.txt"},
        {"an asset", game + "\\Assets\\Kuju\\RailSimulator\\RailVehicles\\a.bin", true, "", "", "Kuju",
         "RailSimulator\\RailVehicles", "a.bin"},
        {"accented names", routes + "Zürich Süd\\Scenarios\\Été\\Scenario.bin", true, routes + "Zürich Süd",
         routes + "Zürich Süd\\Scenarios\\Été", "Zürich Süd", "Scenarios\\Été", "Scenario.bin"},
        {"forward separators from the walk's start", game + "/Content/Routes/Zürich/Scenery/t.bin", true,
         game + "/Content/Routes/Zürich", "", "Zürich", "Scenery", "t.bin"},
        {"neither word below the game", game + "\\Other\\x\\y.bin", false, "", "", "", "", ""},
        {"no second folder", routes + "stray.txt", false, "", "", "", "", ""},
    };
    for (const Case& c : cases) {
        const auto place = PlaceOfContent(game, c.path);
        ASSERT_EQ(place.has_value(), c.valid) << c.label;
        if (!place) continue;
        EXPECT_EQ(place->routeFolder, c.routeFolder) << c.label;
        EXPECT_EQ(place->scenarioFolder, c.scenarioFolder) << c.label;
        EXPECT_EQ(place->subFolder, c.subFolder) << c.label;
        EXPECT_EQ(place->subFolder2, c.subFolder2) << c.label;
        EXPECT_EQ(place->fileName, c.fileName) << c.label;
    }
}

struct ContentGame : LocationGame {
    std::string routes() const { return game() + "\\Content\\Routes\\"; }
    void file(const std::string& relative, const std::string& bytes = "data") {
        root.write("game/Content/Routes/" + relative, bytes);
    }
    // Two routes, one with a scenario, PreLoad and side files that get no row.
    void fillRoutes() {
        file("R1/RouteProperties.xml", Properties("cRouteProperties", "Köln, Hbf", "Köln Hauptbahnhof"));
        file("R1/Networks/Track Tiles/+000000+000000.bin");
        file("R1/Scenarios/S1/ScenarioProperties.xml", Properties("cScenarioProperties", "Früh &amp; spät"));
        file("R1/Scenarios/S1/Scenario.bin");
        file("R1/Scenarios/S1/Scenario.bin.MD5");
        file("Zürich/RouteProperties.xml", Properties("cRouteProperties", "Brno"));
        file("Zürich/PreLoad/Consist.bin");
        file("Zürich/Scenery/+000001-000002.bin");
        file("Zürich/Scenery/+000001-000002.bin.md5");
    }
};

TEST(ContentList, AddToListNamesRoutesAndScenariosAndDropsPreLoadAndSideFiles) {
    ContentGame g;
    g.fillRoutes();
    g.ctx.prefs.language = "German";
    ContentList list;
    list.addToList(g.ctx, ContentList::StartFolder(g.ctx));
    // The German name where there is one, else the English; commas would split a saved row.
    const std::set<std::vector<std::string>> expected = {
        {"K\xF6ln Hauptbahnhof", "R1", "", "RouteProperties.xml"},
        {"K\xF6ln Hauptbahnhof", "R1", "Networks\\Track Tiles", "+000000+000000.bin"},
        {"K\xF6ln Hauptbahnhof - Fr\xFCh & sp\xE4t", "R1", "Scenarios\\S1", "Scenario.bin"},
        {"K\xF6ln Hauptbahnhof - Fr\xFCh & sp\xE4t", "R1", "Scenarios\\S1", "ScenarioProperties.xml"},
        {"Brno", "Zürich", "", "RouteProperties.xml"},
        {"Brno", "Zürich", "Scenery", "+000001-000002.bin"},
    };
    EXPECT_EQ(Rows(list), expected);
    EXPECT_EQ(Numbers(list), (std::vector<std::string>{"1", "2", "3", "4", "5", "6"}));
    for (const ContentRow& row : list.rows) EXPECT_TRUE(fs::exists(tools::HostPath(row.path))) << row.path;
    EXPECT_EQ(g.ui.texts(), std::vector<std::string>{"Selected items have been added to the grid."});

    // A second walk appends, numbering from 1 again.
    list.addToList(g.ctx, g.routes() + "Zürich");
    EXPECT_EQ(list.rows.size(), 8u);
    EXPECT_EQ(list.rows.back().index, "2");
    EXPECT_EQ(list.rows.back().routeName, "Brno");
}

TEST(ContentList, ANameMissingOrEmptyLeavesTheColumnEmptyAndStraysAreTold) {
    ContentGame g;
    g.file("R3/Scenery/a.bin");                                         // no properties file at all
    g.file("R4/RouteProperties.xml", Properties("cRouteProperties", "")); // a name left empty
    g.file("R4/Scenarios/S9/Scenario.bin");                             // a scenario without properties
    g.file("stray.txt");                                                // not two folders deep
    ContentList list;
    list.addToList(g.ctx, g.routes());
    ASSERT_EQ(list.rows.size(), 3u);
    for (const ContentRow& row : list.rows) EXPECT_EQ(row.routeName, "") << row.fileName;
    const auto texts = g.ui.texts();
    ASSERT_EQ(texts.size(), 2u);
    EXPECT_EQ(texts[0], g.routes() + "stray.txt is invalid and contains errors");
    EXPECT_EQ(texts[1], "Selected items have been added to the grid.");
}

TEST(ContentList, AMissingFolderGivesAnEmptyListAndTheStartFolderFollowsTheGame) {
    ContentGame g;
    ContentList list;
    list.addToList(g.ctx, g.game() + "\\Content\\Nowhere\\");
    EXPECT_TRUE(list.rows.empty());
    EXPECT_EQ(ContentList::StartFolder(g.ctx), g.game() + "\\Content\\Routes\\");
    g.ctx.prefs.gameRoot.clear();
    EXPECT_EQ(ContentList::StartFolder(g.ctx), "C:");
}

// A Ui whose first chance to let events through brings "&Abort".
struct AbortingUi : testing::ScriptedUi {
    app::AppContext* ctx = nullptr;
    void pump() override {
        ScriptedUi::pump();
        ctx->abortFlag = true;
    }
};

TEST(ContentList, AbortStopsTheWalkBetweenTwoFilesAndTheNextWalkRunsWhole) {
    ContentGame g;
    for (int i = 0; i < 60; ++i) g.file("R1/Scenery/" + std::to_string(i) + ".bin");
    AbortingUi aborting;
    aborting.ctx = &g.ctx;
    g.ctx.ui = &aborting;
    ContentList list;
    list.addToList(g.ctx, g.routes());
    EXPECT_GT(list.rows.size(), 0u);
    EXPECT_LT(list.rows.size(), 60u);
    g.ctx.ui = &g.ui;
    list.clear();
    list.addToList(g.ctx, g.routes());  // a flag left set by the last run stops nothing
    EXPECT_EQ(list.rows.size(), 60u);
}

TEST(ContentList, ZeroLengthModeListsEmptyFilesAndDeleteLeavesTheMode) {
    ContentGame g;
    g.file("R1/Scenery/empty.bin", "");
    g.file("R1/Scenery/one.bin", "x");
    g.file("R1/Scenery/two.bin", "xy");
    g.file("R1/Scenery/empty.bin.MD5", "");
    ContentList list;
    list.findZeroLength(g.ctx, g.routes());
    EXPECT_TRUE(list.zeroLengthMode);
    std::vector<std::string> names;
    for (const ContentRow& row : list.rows) names.push_back(row.fileName);
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"empty.bin", "one.bin"}));

    const std::size_t empty = names[0] == list.rows[0].fileName ? 0 : 1;
    g.ui.shown.clear();
    g.ui.answers = {base::Answer::Ok};
    EXPECT_TRUE(list.deleteSelected(g.ctx, {empty}, g.routes()));
    EXPECT_FALSE(fs::exists(g.root.path() / "game/Content/Routes/R1/Scenery/empty.bin"));
    EXPECT_TRUE(fs::exists(g.root.path() / "game/Content/Routes/R1/Scenery/one.bin"));
    EXPECT_FALSE(list.zeroLengthMode);
    EXPECT_TRUE(list.rows.empty());
    // Only the warning: the list is not walked again in this mode.
    ASSERT_EQ(g.ui.shown.size(), 1u);
    EXPECT_TRUE(g.ui.shown[0].question);
}

TEST(ContentList, DeleteSelectedWarnsDeletesAndWalksAgain) {
    ContentGame g;
    g.fillRoutes();
    struct Case {
        const char* label;
        std::vector<base::Answer> answers;
        bool selectRow;
        bool emptyRow;
        bool done;
        bool deleted;
        std::string lastText;
    };
    const Case cases[] = {
        {"cancelled at the warning", {base::Answer::Cancel}, true, false, false, false,
         "This will DELETE all selected files - You have been warned!!!\n"
         "If you do not have a back-up of the folder you are about to alter, I suggest\n"
         "you make one before carrying out this procedure!"},
        {"nothing selected", {}, false, false, false, false,
         "You have not selected any items - please select one or more rows in the list first."},
        {"an empty row ends the work", {base::Answer::Ok}, true, true, true, false,
         "Selected items have been removed from the grid."},
        {"confirmed", {base::Answer::Ok}, true, false, true, true, "Selected items have been removed from the grid."},
    };
    for (const Case& c : cases) {
        ContentList list;
        list.addToList(g.ctx, g.routes());
        auto victim = std::find_if(list.rows.begin(), list.rows.end(),
                                   [](const ContentRow& r) { return r.fileName == "+000001-000002.bin"; });
        ASSERT_NE(victim, list.rows.end());
        std::vector<std::size_t> selected;
        if (c.emptyRow) {
            list.rows.push_back({});
            selected.push_back(list.rows.size() - 1);
        }
        if (c.selectRow) selected.push_back(static_cast<std::size_t>(victim - list.rows.begin()));
        const std::size_t before = list.rows.size() - (c.emptyRow ? 1 : 0);
        g.ui.shown.clear();
        g.ui.answers.assign(c.answers.begin(), c.answers.end());
        EXPECT_EQ(list.deleteSelected(g.ctx, selected, g.routes()), c.done) << c.label;
        EXPECT_EQ(fs::exists(g.root.path() / "game/Content/Routes/Zürich/Scenery/+000001-000002.bin"), !c.deleted) << c.label;
        ASSERT_FALSE(g.ui.shown.empty()) << c.label;
        EXPECT_EQ(g.ui.shown.back().text, c.lastText) << c.label;
        if (c.done) {
            EXPECT_EQ(list.rows.size(), before - (c.deleted ? 1 : 0)) << c.label;
        }
        if (c.emptyRow) {
            EXPECT_EQ(g.ui.texts()[1], "You do not appear to have selected any valid items in the list below.") << c.label;
        }
    }
}

TEST(ContentList, SaveBinGridWritesTheRowsToTheReportsFolder) {
    ContentGame g;
    g.fillRoutes();
    ContentList list;
    list.addToList(g.ctx, g.routes());
    g.ui.shown.clear();
    ASSERT_TRUE(list.saveBinGrid(g.ctx));
    EXPECT_EQ(g.ui.texts(), std::vector<std::string>{"Your BIN-Index.csv file is in your Reports folder"});
    const services::ReportTable table = services::ParseCsv(g.root.read("app/Reports/BIN-Index.csv"));
    EXPECT_EQ(table.headings,
              (std::vector<std::string>{"Route Name", "Sub-Folder", "Sub-Folder2", "File Name", "Index!"}));
    ASSERT_EQ(table.rows.size(), list.rows.size());
    for (std::size_t r = 0; r < list.rows.size(); ++r) EXPECT_EQ(table.rows[r], list.rows[r].Cells());
    // The route's name held a comma: it became a dash, so the row keeps its five fields.
    EXPECT_NE(g.root.read("app/Reports/BIN-Index.csv").find("K\xF6ln- Hbf,R1,,RouteProperties.xml,"), std::string::npos);
}

TEST(ContentList, ARowReadBackFromAFileFindsItsFileAgain) {
    ContentGame g;
    g.fillRoutes();
    g.root.write("game/Assets/Kuju/Rail/a.bin", "x");
    ContentList list;
    list.addToList(g.ctx, g.routes());
    ContentList loaded;
    for (const ContentRow& row : list.rows) loaded.rows.push_back(ContentRow::FromCells(row.Cells()));
    for (std::size_t r = 0; r < list.rows.size(); ++r) {
        EXPECT_TRUE(loaded.rows[r].path.empty());
        EXPECT_EQ(fs::canonical(tools::HostPath(loaded.rowFile(g.game(), r))), fs::canonical(tools::HostPath(list.rows[r].path)));
    }
    const ContentRow asset = ContentRow::FromCells({"", "Kuju", "Rail", "a.bin", "1"});
    EXPECT_EQ(ContentRowFile(g.game(), asset), g.game() + "\\Assets\\Kuju\\Rail\\a.bin");
    const ContentRow gone = ContentRow::FromCells({"", "R9", "", "x.bin"});
    EXPECT_EQ(ContentRowFile(g.game(), gone), g.game() + "\\Content\\Routes\\R9\\x.bin");
    EXPECT_EQ(loaded.rowFile(g.game(), 999), "");
}

TEST(ContentList, TheRealRouteIsListedWithItsNames) {
    ContentGame g;
    if (!g.copyRealRoute()) GTEST_SKIP() << "the real route of the test data is not beside the checkout";
    std::size_t files = 0, sideFiles = 0;
    for (const auto& entry : fs::recursive_directory_iterator(g.root.path() / "game/Content/Routes")) {
        if (!entry.is_regular_file()) continue;
        ++files;
        if (entry.path().extension() == ".MD5") ++sideFiles;
    }
    ContentList list;
    list.addToList(g.ctx, ContentList::StartFolder(g.ctx));
    EXPECT_EQ(list.rows.size(), files - sideFiles);
    std::size_t scenarioRows = 0;
    for (const ContentRow& row : list.rows) {
        EXPECT_EQ(row.subFolder, testing::kRealRoute);
        if (row.subFolder2.rfind("Scenarios\\", 0) == 0) {
            EXPECT_EQ(row.routeName, "HSL-alue - Testiajot") << row.fileName;
            ++scenarioRows;
        } else {
            EXPECT_EQ(row.routeName, "HSL-alue") << row.fileName;
        }
    }
    EXPECT_EQ(scenarioRows, 3u);  // Scenario.bin, InitialSave.bin, ScenarioProperties.xml
}

}  // namespace
}  // namespace ferrolund::assets
