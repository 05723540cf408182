#include "scenarios/scenario_texts.h"

#include <gtest/gtest.h>

#include "core/tools/testdata_file.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"

namespace ferrolund::scenarios {
namespace {

struct Fixture {
    testing::TempFolder game;
    testing::ScriptedUi ui;
    app::AppContext ctx;
    Fixture() {
        ctx.prefs.gameRoot = game.system();
        ctx.appRoot = game.system();
        ctx.ui = &ui;
    }
    std::string folder(const std::string& scenario) const {
        return ScenarioFolderPath(ctx, "Route-é", scenario);
    }
};

TEST(ScenarioTexts, TheRealScenarioLoadsBothTexts) {
    FERROLUND_READ_TESTDATA(binary, "serz/scenario-game.bin");
    Fixture f;
    f.game.write("Content/Routes/Route-é/Scenarios/Real/ScenarioProperties.xml",
                 "<cScenarioProperties><DisplayName><English>Real</English></DisplayName></cScenarioProperties>");
    f.game.write("Content/Routes/Route-é/Scenarios/Real/Scenario.bin", binary);
    ScenarioTexts texts;
    ASSERT_FALSE(LoadScenarioTexts(f.ctx, f.folder("Real"), texts));
    EXPECT_NE(texts.scenarioXml.find("<cConsist"), std::string::npos);
    EXPECT_NE(texts.propertiesXml.find("<English>Real</English>"), std::string::npos);
    EXPECT_EQ(texts.folder, f.folder("Real"));
}

TEST(ScenarioTexts, BadScenariosSayWhatIsWrongAndLoadNothing) {
    Fixture f;
    const std::string good = "<cScenarioProperties/>";
    f.game.write("Content/Routes/Route-é/Scenarios/NoBin/ScenarioProperties.xml", good);
    f.game.write("Content/Routes/Route-é/Scenarios/Empty/ScenarioProperties.xml", "");
    f.game.write("Content/Routes/Route-é/Scenarios/Empty/Scenario.bin", "SERZ");
    f.game.write("Content/Routes/Route-é/Scenarios/Cut/ScenarioProperties.xml", good);
    f.game.write("Content/Routes/Route-é/Scenarios/Cut/Scenario.bin", std::string("SERZ\0\0\x01\0\xff", 9));
    f.game.write("Content/Routes/Route-é/Scenarios/Text/ScenarioProperties.xml", good);
    f.game.write("Content/Routes/Route-é/Scenarios/Text/Scenario.bin", "not a scenario at all");
    struct Case {
        const char* scenario;
        const char* named;  // what the message names
    } cases[] = {{"Gone", "Gone"},          {"NoBin", "Scenario.bin"}, {"Empty", "ScenarioProperties.xml"},
                 {"Cut", "Scenario.bin"},   {"Text", "Scenario.bin"}};
    for (const Case& c : cases) {
        ScenarioTexts texts;
        texts.scenarioXml = "left over";
        const base::Status status = LoadScenarioTexts(f.ctx, f.folder(c.scenario), texts);
        ASSERT_TRUE(status) << c.scenario;
        EXPECT_NE(status->description.find(c.named), std::string::npos) << status->description;
        EXPECT_TRUE(texts.scenarioXml.empty() && texts.propertiesXml.empty()) << c.scenario;
    }
}

}  // namespace
}  // namespace ferrolund::scenarios
