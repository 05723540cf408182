#include "assets/ap_consists.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "archives/zip_writer.h"
#include "core/routes/location_test_support.h"
#include "core/sample/sample_fixture.h"
#include "tools/host_path.h"

namespace ferrolund::assets {
namespace {

namespace fs = std::filesystem;
using testing::LocationGame;

std::string Properties(const std::string& root, const std::string& english) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<" + root +
           ">\n<DisplayName>\n<Localisation-cUserLocalisedString>\n<English d:type=\"cDeltaString\">" + english +
           "</English>\n</Localisation-cUserLocalisedString>\n</DisplayName>\n</" + root + ">\n";
}

struct ApGame : LocationGame {
    // An archive below the game folder holding the given files (stored name, text).
    std::string archive(const std::string& relative, const std::vector<std::pair<std::string, std::string>>& files) {
        archives::ZipWriter writer;
        const std::string path = game() + "/" + relative;
        fs::create_directories(fs::path(path).parent_path());
        EXPECT_FALSE(writer.create(path, {}));
        int n = 0;
        for (const auto& [stored, text] : files) {
            const auto source = root.write("source/" + std::to_string(n++), text);
            EXPECT_FALSE(writer.addFile(source.string(), stored));
        }
        EXPECT_FALSE(writer.finish());
        return path;
    }
};

TEST(ElementBehind, TakesTheWholeElementAfterTheWord) {
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"Content\\Routes\\R1\\Scenarios\\S1\\ScenarioProperties.xml", "Routes", "R1"},
        {"Content\\Routes\\R1\\Scenarios\\S1\\ScenarioProperties.xml", "Scenarios", "S1"},
        {"content/routes/Zürich/scenarios/Été/ScenarioProperties.xml", "Scenarios", "Été"},
        {"Content\\MyRoutes\\X\\Routes\\R2\\a.xml", "Routes", "R2"},
        {"Content\\Routes", "Routes", ""},
        {"Content\\Routes\\", "Routes", ""},
        {"Assets\\P\\Q\\a.xml", "Routes", ""},
        {"Routes\\R3", "Routes", "R3"},
    };
    for (const auto& [stored, word, expected] : cases) EXPECT_EQ(ElementBehind(stored, word), expected) << stored;
}

TEST(ApConsists, FindsArchivesInAnyCaseBelowTheFolder) {
    ApGame g;
    g.archive("Content/a.ap", {{"x.txt", "x"}});
    g.archive("Assets/P/Q/B.AP", {{"x.txt", "x"}});
    g.archive("Assets/P/Q/not.zip", {{"x.txt", "x"}});
    g.root.write("game/Assets/P/Q/deep/Ünterwegs.ap", "not an archive");
    ApConsists model;
    model.findArchives(g.ctx, g.game());
    std::vector<std::string> names;
    for (const std::string& a : model.archives) names.push_back(fs::path(tools::HostPath(a)).filename());
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"B.AP", "a.ap", "Ünterwegs.ap"}));
    model.findArchives(g.ctx, g.game() + "\\Content");
    EXPECT_EQ(model.archives.size(), 1u);
}

TEST(ApConsists, ReadsThePropertiesOfTheChosenArchivesAndFillsTheDetails) {
    ApGame g;
    g.root.write("game/Content/Routes/R2/RouteProperties.xml", Properties("cRouteProperties", "Disk Route"));
    const std::string first = g.archive(
        "Content/first.ap",
        {{"Content\\Routes\\R1\\RouteProperties.xml", Properties("cRouteProperties", "Gäuboden")},
         {"Content\\Routes\\R1\\Scenarios\\S1\\ScenarioProperties.xml", Properties("cScenarioProperties", "Morning")},
         {"Content\\Routes\\R1\\Scenarios\\S1\\Scenario.bin", "binary"},
         {"Content\\Routes\\R2\\Scenarios\\S2\\scenarioproperties.XML", Properties("cScenarioProperties", "Night")}});
    const std::string second = g.archive(
        "Content/second.ap", {{"Content\\Routes\\R3\\Scenarios\\S3\\ScenarioProperties.xml",
                               Properties("cScenarioProperties", "Lost &amp; found")}});
    ApConsists model;
    model.archives = {first, second};

    // Details asked for first: the order guard.
    EXPECT_FALSE(model.addDetails(g.ctx, {0}));
    ASSERT_EQ(g.ui.texts().size(), 1u);
    EXPECT_EQ(g.ui.texts()[0], "You have already run 'Find .ap files'\nThis will not work, you must use the\n"
                               "'Find Scenario Properties' first.");

    g.ui.shown.clear();
    ASSERT_TRUE(model.findScenarioProperties(g.ctx, {0, 1}));
    EXPECT_EQ(g.ui.texts(), std::vector<std::string>{"All selected .xml files have been added to the grid."});
    ASSERT_EQ(model.properties.size(), 3u);
    EXPECT_EQ(model.properties[0].archive, first);
    EXPECT_EQ(model.properties[2].stored, "Content\\Routes\\R3\\Scenarios\\S3\\ScenarioProperties.xml");

    g.ui.shown.clear();
    ASSERT_TRUE(model.addDetails(g.ctx, {0, 1, 2, 7}));
    EXPECT_EQ(g.ui.texts(), std::vector<std::string>{"All selected Scenario details have been added to the main grid."});
    const std::vector<std::vector<std::string>> expected = {
        {"R1", "S1", "G\xE4uboden", "Morning", first},  // the route named in the same archive
        {"R2", "S2", "Disk Route", "Night", first},     // the route named on disk
        {"R3", "S3", "", "Lost & found", second},       // a route known nowhere
    };
    ASSERT_EQ(model.details.size(), expected.size());
    for (std::size_t r = 0; r < expected.size(); ++r) EXPECT_EQ(model.details[r].Cells(), expected[r]) << r;
}

TEST(ApConsists, BrokenArchivesAreReportedAndTheOthersRead) {
    ApGame g;
    const std::string good = g.archive(
        "Content/good.ap",
        {{"Content\\Routes\\R1\\Scenarios\\S1\\ScenarioProperties.xml", Properties("cScenarioProperties", "One")}});
    const auto junk = g.root.write("game/Content/junk.ap", "PK\x03\x04 this is not a zip");
    const std::string truncated = g.game() + "/Content/truncated.ap";
    {
        const std::string bytes = g.root.read("game/Content/good.ap");
        g.root.write("game/Content/truncated.ap", bytes.substr(0, bytes.size() / 2));
    }
    ApConsists model;
    model.archives = {junk.string(), good, truncated, g.game() + "/Content/missing.ap"};
    ASSERT_TRUE(model.findScenarioProperties(g.ctx, {0, 1, 2, 3}));
    ASSERT_EQ(model.properties.size(), 1u);
    EXPECT_EQ(model.properties[0].archive, good);
    const auto shown = g.ui.shown;
    ASSERT_EQ(shown.size(), 4u);
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(shown[i].icon, base::Icon::Critical) << shown[i].text;
    EXPECT_EQ(shown[3].text, "All selected .xml files have been added to the grid.");
    const std::string log = g.root.read("app/Errors.txt");
    EXPECT_NE(log.find("frmAPConsists"), std::string::npos);
}

TEST(ApConsists, NothingChosenIsTold) {
    ApGame g;
    ApConsists model;
    model.archives = {"x.ap"};
    EXPECT_FALSE(model.findScenarioProperties(g.ctx, {}));
    model.properties.push_back({"x.ap", "Content\\Routes\\R\\Scenarios\\S\\ScenarioProperties.xml", ""});
    EXPECT_FALSE(model.addDetails(g.ctx, {}));
    const std::string none = "You have not selected any items - please select one or more rows in the list first.";
    EXPECT_EQ(g.ui.texts(), (std::vector<std::string>{none, none}));
    model.clear();
    EXPECT_TRUE(model.archives.empty() && model.properties.empty() && model.details.empty());
}

TEST(ApConsists, BuildRouteIndexUnpacksThePropertiesAndIndexesByItsRule) {
    const std::string packed = "d7e2b6a0-51c9-4f8d-a6e3-0b4c8f2917de";
    for (const base::Answer answer : {base::Answer::Cancel, base::Answer::Ok}) {
        ApGame g;
        fs::create_directories(g.root.path() / "game/Content/Routes" / packed);
        fs::copy_file(sample::SampleRoot() / "Content/Routes" / packed / "MainContent.ap",
                      g.root.path() / "game/Content/Routes" / packed / "MainContent.ap");
        // A route on disk whose name is only in Dutch: not one of the three languages.
        g.root.write("game/Content/Routes/a-dutch/RouteProperties.xml", "<Dutch>Noord</Dutch>");
        fs::copy(fs::path(FERROLUND_BIN_DIR) / "Templates", g.root.path() / "app/Templates",
                 fs::copy_options::recursive);
        g.ui.answers = {answer};
        BuildRouteIndex(g.ctx);
        const bool done = answer == base::Answer::Ok;
        EXPECT_EQ(fs::exists(g.root.path() / "app/IndexFiles/RouteIndex.csv"), done);
        EXPECT_EQ(g.ui.shown.size(), done ? 2u : 1u);  // the prompt, and the closing text
        if (!done) continue;
        ASSERT_EQ(g.ctx.routeIndex.count(), 2);
        EXPECT_EQ(g.ctx.routeIndex.routeFolder[0], "");
        EXPECT_EQ(g.ctx.routeIndex.routeFolder[1], packed);
        EXPECT_EQ(g.ui.texts().back(),
                  "All RouteProperties.xml files have been extracted and\nRouteIndex.csv written to 'IndexFiles' folder");
    }
}

}  // namespace
}  // namespace ferrolund::assets
