#include "archives/make_batch.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/scripted_ui.h"
#include "support/temp_folder.h"
#include "zip_fixture.h"

namespace ferrolund::archives {
namespace {

namespace fs = std::filesystem;
using testing::MakeZip;
using testing::ReadFile;

constexpr const char* kRoute = "3f6a2c1e-7b4d-4e8a-9c21-5d0e8b7a4f10";

// A program folder with the shipped templates and a small installation whose GameRoot
// has a blank in its name.
struct BulkTest : ::testing::Test {
    testing::TempFolder root;
    testing::ScriptedUi ui;
    app::AppContext ctx;
    tools::BatchOutcome outcome;

    BulkTest() {
        ctx.appRoot = root.system() + "\\Program";
        ctx.prefs.gameRoot = root.system() + "\\Rail Works";
        ctx.ui = &ui;
        fs::create_directories(root.path() / "Program");
        fs::copy(fs::path(FERROLUND_SOURCE_DIR) / "data" / "Templates", root.path() / "Program" / "Templates");
        MakeZip(game("Assets/Kuju/Stock/MainContent.ap"),
                {{"RailVehicles/Diesel/Engine/loco.bin", "loco"},
                 {"RailVehicles/Diesel/Engine/loco.GeoPcDx", "geo"},
                 {"PreLoad/consist.bin", "preload"},
                 {"Scenery/tree.bin", "tree"}});
        MakeZip(game(std::string("Content/Routes/") + kRoute + "/MainContent.ap"),
                {{"RouteProperties.xml", "<English d:type=\"cDeltaString\">Valley: North &amp; South</English>"},
                 {"Scenarios/s1/ScenarioProperties.xml", "props"},
                 {"Scenarios/s1/Scenario.bin", "scen"},
                 {"Scenarios/s1/Extra.xml", "extra"},
                 {"Networks/Tracks.bin", "tracks"}});
    }
    fs::path game(const std::string& relative) const { return root.path() / "Rail Works" / relative; }
    std::string route(const std::string& relative) const {
        return ReadFile(game(std::string("Content/Routes/") + kRoute + "/" + relative));
    }
};

TEST_F(BulkTest, EveryTemplateCarriesTheMarkerAndOnlyKnownCommands) {
    for (const char* name : {"APBatch1", "APBatch2", "APBatch3", "APBatch4", "APBatch6", "APBatch7", "apbatch8",
                             "APBatch9", "APBatch10"}) {
        const std::string text = ReadFile(root.path() / "Program" / "Templates" / (std::string(name) + ".txt"));
        EXPECT_NE(text.find(kTemplateMarker), std::string::npos) << name;
        EXPECT_EQ(text.find("aaaaaa"), std::string::npos) << name;
    }
}

TEST_F(BulkTest, RollingStockFromAllArchivesOverwrites) {
    testing::WriteFile(game("Assets/Kuju/Stock/RailVehicles/Diesel/Engine/loco.bin"), "old");
    ui.answers = {base::Answer::Ok};
    ASSERT_TRUE(RunBulkExtraction(ctx, BulkKind::RollingStock, outcome));
    EXPECT_TRUE(outcome.errors.empty()) << outcome.errors[0].description;
    EXPECT_EQ(ReadFile(game("Assets/Kuju/Stock/RailVehicles/Diesel/Engine/loco.bin")), "loco");
    EXPECT_FALSE(fs::exists(game("Assets/Kuju/Stock/Scenery")));
    EXPECT_EQ(ui.shown[0].text, BulkQuestion(BulkKind::RollingStock));
    EXPECT_TRUE(fs::exists(root.path() / "Program" / "APBatch1.bat"));
}

TEST_F(BulkTest, CancelRunsNothing) {
    ui.answers = {base::Answer::Cancel};
    EXPECT_FALSE(RunBulkExtraction(ctx, BulkKind::Scenarios, outcome));
    EXPECT_FALSE(fs::exists(root.path() / "Program" / "APBatch2.bat"));
}

TEST_F(BulkTest, ScenariosOverwriteButTheirPropertiesDoNot) {
    testing::WriteFile(game(std::string("Content/Routes/") + kRoute + "/Scenarios/s1/ScenarioProperties.xml"), "mine");
    ui.answers = {base::Answer::Ok, base::Answer::Ok};
    ASSERT_TRUE(RunBulkExtraction(ctx, BulkKind::ScenarioProperties, outcome));
    EXPECT_EQ(route("Scenarios/s1/ScenarioProperties.xml"), "mine");
    EXPECT_EQ(route("Scenarios/s1/Scenario.bin"), "scen");
    EXPECT_FALSE(fs::exists(game(std::string("Content/Routes/") + kRoute + "/Scenarios/s1/Extra.xml")));
    ASSERT_TRUE(RunBulkExtraction(ctx, BulkKind::Scenarios, outcome));
    EXPECT_EQ(route("Scenarios/s1/ScenarioProperties.xml"), "props");
    EXPECT_EQ(route("Scenarios/s1/Extra.xml"), "extra");
    EXPECT_FALSE(fs::exists(game(std::string("Content/Routes/") + kRoute + "/Networks")));
}

TEST_F(BulkTest, RoutePropertiesAreNotOverwrittenAndSignpostsAreMadeOnce) {
    ui.answers = {base::Answer::Ok};
    BulkExtractionCommand(ctx, BulkKind::RouteSignposts, nullptr);
    EXPECT_NE(route("RouteProperties.xml").find("Valley"), std::string::npos);
    const fs::path signpost = game(std::string("Content/Routes/") + kRoute + "  Valley North & South");
    EXPECT_TRUE(fs::is_directory(signpost));
    EXPECT_EQ(ui.texts().back(),
              "All RouteProperties.xml files have been extracted and\r\nRoute Names added in the Routes folder where possible");
    testing::WriteFile(game(std::string("Content/Routes/") + kRoute + "/RouteProperties.xml"),
                       "<English>Changed</English>");
    ui.answers = {base::Answer::Ok};
    ASSERT_TRUE(RunBulkExtraction(ctx, BulkKind::RouteProperties, outcome));
    EXPECT_EQ(route("RouteProperties.xml"), "<English>Changed</English>");
    EXPECT_EQ(MakeRouteSignposts(ctx), 1);  // the new name; the old sign-post stays
    EXPECT_EQ(MakeRouteSignposts(ctx), 0);
}

TEST_F(BulkTest, AVeryLongRouteNameIsCutToTheLimit) {
    const std::string longName(300, 'N');
    testing::WriteFile(game("Content/Routes/abc/RouteProperties.xml"), "<English>" + longName + "</English>");
    EXPECT_EQ(MakeRouteSignposts(ctx), 1);
    const std::string routes = ctx.gameRoot() + "\\Content\\Routes";
    bool found = false;
    for (const auto& e : fs::directory_iterator(game("Content/Routes"))) {
        const std::string name = e.path().filename().string();
        if (name.starts_with("abc  ")) {
            found = true;
            EXPECT_EQ(name.size(), 240 - routes.size());
        }
    }
    EXPECT_TRUE(found);
}

TEST_F(BulkTest, SelectedArchivesRunTheirTemplateInTheirFolder) {
    const std::string ap = ctx.gameRoot() + "\\Assets\\Kuju\\Stock\\MainContent.ap";
    ui.answers = {base::Answer::Ok};
    ASSERT_TRUE(ExtractFromSelected(ctx, SelectedKind::LocoGeometry, {ap, "  "}, outcome));
    EXPECT_TRUE(fs::exists(game("Assets/Kuju/Stock/RailVehicles/Diesel/Engine/loco.GeoPcDx")));
    EXPECT_FALSE(fs::exists(game("Assets/Kuju/Stock/RailVehicles/Diesel/Engine/loco.bin")));
    EXPECT_EQ(ui.texts().back(), "All selected folders have been unpacked and files made read/write.");
    ui.answers = {base::Answer::Ok};
    ASSERT_TRUE(ExtractFromSelected(ctx, SelectedKind::StockBinaries, {ap}, outcome));
    EXPECT_TRUE(fs::exists(game("Assets/Kuju/Stock/RailVehicles/Diesel/Engine/loco.bin")));
    EXPECT_TRUE(outcome.errors.empty());
}

TEST_F(BulkTest, RoutePropertiesFromSelectedIsOneBatchOfTwoLinesEach) {
    const std::string f = ctx.gameRoot() + "\\Content\\Routes\\" + kRoute;
    EXPECT_EQ(RoutePropertiesBatch({f + "\\MainContent.ap", ""}),
              "7za e -y -o\"" + f + "\" \"" + f + "\\MainContent.ap\" \"RouteProperties.xml\"\r\nATTRIB -R \"" + f +
                  "\\*.*\" /s\r\n");
    ui.answers = {base::Answer::Ok};
    ASSERT_TRUE(RoutePropertiesFromSelected(ctx, {f + "\\MainContent.ap"}, outcome));
    EXPECT_TRUE(outcome.errors.empty()) << outcome.errors[0].description;
    EXPECT_NE(route("RouteProperties.xml").find("Valley"), std::string::npos);
}

TEST_F(BulkTest, UnpackSelectedOverwritesAndListingShowsTheEntries) {
    const std::string ap = ctx.gameRoot() + "\\Assets\\Kuju\\Stock\\MainContent.ap";
    testing::WriteFile(game("Assets/Kuju/Stock/Scenery/tree.bin"), "older");
    ui.answers = {base::Answer::Ok};
    ASSERT_TRUE(UnpackSelected(ctx, {ap}, outcome));
    EXPECT_TRUE(outcome.errors.empty()) << outcome.errors[0].description;
    EXPECT_EQ(ReadFile(game("Assets/Kuju/Stock/Scenery/tree.bin")), "tree");
    ui.answers = {base::Answer::Ok};
    const auto list = ListArchive(ctx, ap);
    ASSERT_TRUE(list);
    EXPECT_NE(list->find("PreLoad\\consist.bin"), std::string::npos);
    ui.answers = {base::Answer::Cancel};
    EXPECT_FALSE(ListArchive(ctx, ap));
}

TEST_F(BulkTest, AMissingTemplateWritesNothingAndSaysSo) {
    fs::remove(root.path() / "Program" / "Templates" / "APBatch1.txt");
    ui.answers = {base::Answer::Ok};
    RunBulkExtraction(ctx, BulkKind::RollingStock, outcome);
    EXPECT_EQ(ui.texts()[1].rfind("An error occurred while writing ", 0), 0u);
    EXPECT_FALSE(fs::exists(game("Assets/Kuju/Stock/RailVehicles")));
}

TEST_F(BulkTest, IndexFilesHoldNameAndFolder) {
    const std::vector<IndexRow> rows = {{"MainContent.ap", "C:\\RW\\Assets\\Kuju\\Stock"}, {"a.ap", "D:\\x"}};
    EXPECT_EQ(IndexCsvText(rows), "MainContent.ap,C:\\RW\\Assets\\Kuju\\Stock\r\na.ap,D:\\x\r\n");
    EXPECT_TRUE(WriteApIndex(ctx, rows));
    EXPECT_TRUE(WriteBinIndex(ctx, rows));
    EXPECT_EQ(ReadFile(root.path() / "Program" / "Data" / "AP-Index.csv"), IndexCsvText(rows));
    EXPECT_EQ(ReadFile(root.path() / "Program" / "Reports" / "BIN-Index.csv"), IndexCsvText(rows));
}

}  // namespace
}  // namespace ferrolund::archives
