// The scenario verbs of ferrolund-cli.
#include <gtest/gtest.h>

#include <filesystem>

#include "support/cli_run.h"
#include "support/temp_folder.h"

namespace ferrolund::cli {
namespace {

namespace fs = std::filesystem;
using testing::Cli;
using testing::CliRun;

const std::string kScenarios = "Content/Routes/Strecke-é/Scenarios/";

std::string Properties(const std::string& name, const std::string& scenarioClass) {
    return "<cScenarioProperties><DevString>g-" + name + "</DevString><DisplayName><English>" + name +
           "</English></DisplayName><ScenarioClass d:type=\"cDeltaString\">" + scenarioClass + "</ScenarioClass></cScenarioProperties>";
}

// A scenario whose consists hold the given numbers of vehicles, compiled by the serz verb.
void WriteScenario(const testing::TempFolder& game, const testing::TempFolder& app, const std::string& folder,
                   const std::string& name, const std::vector<int>& consists) {
    std::string xml = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<cRecordSet xmlns:d=\"http://www.kuju.com/TnT/"
                      "2003/Delta\" d:version=\"1.0\" d:id=\"1\">\r\n<Record>\r\n";
    int id = 10;
    for (int vehicles : consists) {
        xml += "<cConsist d:id=\"" + std::to_string(id++) + "\">\r\n<RailVehicles>\r\n";
        for (int v = 0; v < vehicles; ++v) xml += "<cOwnedEntity d:id=\"" + std::to_string(id++) + "\"></cOwnedEntity>\r\n";
        xml += "</RailVehicles>\r\n</cConsist>\r\n";
    }
    xml += "</Record>\r\n</cRecordSet>\r\n";
    const fs::path source = game.write("source.xml", xml);
    game.write(kScenarios + folder + "/ScenarioProperties.xml", Properties(name, "eCareerScenarioClass"));
    const fs::path target = game.path() / (kScenarios + folder + "/Scenario.bin");
    const CliRun compiled = Cli({"serz", source.string(), "bin:" + target.string()}, app.system());
    ASSERT_EQ(compiled.code, 0) << compiled.err;
}

TEST(ScenarioVerbs, ListsCleansAndReverts) {
    testing::TempFolder game, app;
    WriteScenario(game, app, "S1", "Früh", {1, 0, 2, 0});
    game.write(kScenarios + "S2/ScenarioProperties.xml", Properties("Abend", "eTimetableScenarioClass"));
    const std::vector<std::string> root = {"--game-root", game.system()};
    auto run = [&](std::vector<std::string> args) {
        args.insert(args.end(), root.begin(), root.end());
        return Cli(args, app.system());
    };

    const CliRun list = run({"scenarios", "Strecke-é"});
    EXPECT_EQ(list.code, 0) << list.err;
    EXPECT_NE(list.out.find("S2\tTimetabled\tAbend\n"), std::string::npos) << list.out;
    EXPECT_NE(list.out.find("S1\tCareer\tFrüh\n"), std::string::npos) << list.out;

    const CliRun clean = run({"scenario-clean", "Strecke-é", "Früh"});
    EXPECT_EQ(clean.code, 0) << clean.err;
    EXPECT_EQ(clean.out.rfind("2 empty consists removed\n", 0), 0u) << clean.out;
    EXPECT_TRUE(fs::exists(game.path() / (kScenarios + "S1/Scenario.bak")));
    const std::string cleaned = game.read(kScenarios + "S1/Scenario.bin");

    game.write(kScenarios + "S1/Scenario.bak1", "later");
    const CliRun revert = run({"scenario-revert", "Strecke-é"});
    EXPECT_EQ(revert.code, 0) << revert.err;
    EXPECT_EQ(revert.out, "1 scenarios reverted, 1 numbered back-ups deleted\n");
    EXPECT_NE(game.read(kScenarios + "S1/Scenario.bin"), cleaned);
    EXPECT_FALSE(fs::exists(game.path() / (kScenarios + "S1/Scenario.bak")));
}

TEST(ScenarioVerbs, WrongArgumentsAndBadFiles) {
    testing::TempFolder game, app;
    WriteScenario(game, app, "S1", "Früh", {1});
    game.write(kScenarios + "Bad/ScenarioProperties.xml", Properties("Kaputt", "eStandardScenarioClass"));
    game.write(kScenarios + "Bad/Scenario.bin", "not a scenario");
    struct Case {
        std::vector<std::string> args;
        int code;
        const char* said;  // on stderr
    } cases[] = {
        {{"scenarios"}, 2, "usage: scenarios ROUTE"},
        {{"scenario-clean", "Strecke-é"}, 2, "usage: scenario-clean ROUTE SCENARIO"},
        {{"scenario-revert", "a", "b", "c"}, 2, "usage: scenario-revert"},
        {{"scenarios", "Nowhere"}, 1, "no route \"Nowhere\""},
        {{"scenario-clean", "Strecke-é", "Nothing"}, 1, "has no scenario \"Nothing\""},
        {{"scenario-clean", "Strecke-é", "Kaputt"}, 1, "could not be converted"},
    };
    for (const Case& c : cases) {
        std::vector<std::string> args = c.args;
        args.insert(args.end(), {"--game-root", game.system()});
        const CliRun run = Cli(args, app.system());
        EXPECT_EQ(run.code, c.code) << c.args[0] << run.err;
        EXPECT_NE(run.err.find(c.said), std::string::npos) << run.err;
    }
    EXPECT_EQ(game.read(kScenarios + "Bad/Scenario.bin"), "not a scenario");
    const CliRun none = Cli({"scenario-clean", "Strecke-é", "S1", "--game-root", game.system()}, app.system());
    EXPECT_EQ(none.out, "0 empty consists removed\n");
}

}  // namespace
}  // namespace ferrolund::cli
