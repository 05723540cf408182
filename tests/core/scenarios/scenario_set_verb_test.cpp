// ferrolund-cli scenario-set on a real scenario in a route with an accented name.
#include <gtest/gtest.h>

#include <filesystem>

#include "app/app_context.h"
#include "core/tools/testdata_file.h"
#include "support/cli_run.h"
#include "support/temp_folder.h"
#include "tools/serz_convert.h"

namespace ferrolund::scenarios {
namespace {

namespace fs = std::filesystem;

constexpr const char* kRealProperties =
    "routes/ff1ebaa8-82f5-43ca-9816-859956f4d56c/Scenarios/b01bda98-a8d8-4615-ba62-1be3f3edb378/"
    "ScenarioProperties.xml";
constexpr const char* kScenario = "Content/Routes/Strecke-ü/Scenarios/Fahrt/";

struct Game {
    testing::TempFolder app, game;
    std::string binary, properties;
    Game(std::string realBinary, std::string realProperties)
        : binary(std::move(realBinary)), properties(std::move(realProperties)) {
        fs::copy(fs::path(FERROLUND_BIN_DIR) / "Language", app.path() / "Language", fs::copy_options::recursive);
        fs::copy(fs::path(FERROLUND_BIN_DIR) / "Templates", app.path() / "Templates", fs::copy_options::recursive);
        game.write(std::string(kScenario) + "Scenario.bin", binary);
        game.write(std::string(kScenario) + "ScenarioProperties.xml", properties);
    }
    testing::CliRun run(std::vector<std::string> args) {
        args.insert(args.begin(), {"--game-root", game.system(), "scenario-set", "Strecke-ü", "Fahrt"});
        return testing::Cli(args, app.system());
    }
    std::string file(const std::string& name) const { return game.read(std::string(kScenario) + name); }
    std::size_t files() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(game.path() / kScenario), fs::directory_iterator()));
    }
};

TEST(ScenarioSetVerb, ChangesTheDetailsAndMovesTheConsists) {
    FERROLUND_READ_TESTDATA(binary, "serz/scenario-game.bin");
    FERROLUND_READ_TESTDATA(properties, kRealProperties);
    Game g(binary, properties);
    const testing::CliRun run = g.run({"--field", "display-name=Früh & spät", "--field", "start-time=1230",
                                       "--field", "class=standard", "--field", "author=Zoë", "--field",
                                       "weather-file=/x/Assets/Kuju/RailSimulator/Weather/Snow.bin", "--field",
                                       "preload=DTG|Class 66", "--shift-consists"});
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_NE(run.out.find("have been updated"), std::string::npos) << run.out;
    EXPECT_NE(run.out.find("moved by 1800 seconds"), std::string::npos) << run.out;  // 1200 loaded
    const std::string saved = g.file("ScenarioProperties.xml");
    for (const char* expected : {">Fr\xC3\xBCh &amp; sp\xC3\xA4t</English>", ">45000.0000</StartTime>",
                                 ">eStandardScenarioClass</ScenarioClass>", "<Author d:type=\"cDeltaString\">Zo\xEB</Author>",
                                 ">Weather\\Snow.xml</BlueprintID>", ">Class 66</Product>"}) {
        EXPECT_NE(saved.find(expected), std::string::npos) << expected;
    }
    EXPECT_EQ(g.file("ScenarioProperties.bak"), properties);
    EXPECT_EQ(g.file("Scenario.bak"), binary);
    app::AppContext ctx;
    std::string xml;
    ASSERT_FALSE(tools::SerzReadXml(ctx, (g.game.path() / kScenario / "Scenario.bin").string(), xml));
    EXPECT_NE(xml.find(">47100</StartTime>"), std::string::npos);  // 45300 + 1800
}

TEST(ScenarioSetVerb, BadArgumentsChangeNothing) {
    FERROLUND_READ_TESTDATA(binary, "serz/scenario-game.bin");
    FERROLUND_READ_TESTDATA(properties, kRealProperties);
    struct Case {
        std::vector<std::string> args;
        int code;
        const char* message;
    } cases[] = {
        {{"--field", "colour=red"}, 2, "no field colour"},
        {{"--field", "display-name"}, 2, "NAME=VALUE"},
        {{"--field", "class=express"}, 2, "no scenario class"},
        {{"--field", "weather-file=/x/Weather/Snow.bin"}, 2, "below an Assets folder"},
        {{"--field", "start-time=2401"}, 1, "24hour format"},
        {{"--field", "start-time=2401", "--shift-consists"}, 1, "after 2400"},
        {{"--field", "start-time=930"}, 1, "24hour format"},
        {{}, 2, "scenario-set ROUTE SCENARIO"},
    };
    for (const Case& c : cases) {
        Game g(binary, properties);
        const testing::CliRun run = g.run(c.args);
        EXPECT_EQ(run.code, c.code) << c.message << run.err;
        EXPECT_NE(run.err.find(c.message), std::string::npos) << run.err;
        EXPECT_EQ(g.file("ScenarioProperties.xml"), properties);
        EXPECT_EQ(g.file("Scenario.bin"), binary);
        EXPECT_EQ(g.files(), 2u);
    }
    Game g(binary, properties);
    const testing::CliRun run = testing::Cli({"--game-root", g.game.system(), "scenario-set", "Strecke-ü", "Gone",
                                              "--field", "year=2001"},
                                             g.app.system());
    EXPECT_EQ(run.code, 1);
    EXPECT_NE(run.err.find("no scenario Gone"), std::string::npos) << run.err;
}

}  // namespace
}  // namespace ferrolund::scenarios
