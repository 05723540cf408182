#include "scenarios/scenario_save.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <sstream>

#include "core/tools/testdata_file.h"
#include "scenarios/scenario_texts.h"
#include "support/locked_folder.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"
#include "tools/serz_convert.h"

namespace ferrolund::scenarios {
namespace {

namespace fs = std::filesystem;

const char* const kProperties = "<cScenarioProperties><DisplayName><English>Zürich</English></DisplayName>"
                                "</cScenarioProperties>";
const char* const kRelative = "Content/Routes/Route-é/Scenarios/Szenario ß/";

struct Fixture {
    testing::TempFolder game;
    testing::ScriptedUi ui;
    app::AppContext ctx;
    std::string binary;  // the real scenario
    std::string folder;
    Fixture() {
        ctx.prefs.gameRoot = game.system();
        ctx.appRoot = game.system() + "/Ferrolund";
        ctx.ui = &ui;
        folder = ScenarioFolderPath(ctx, "Route-é", "Szenario ß");
    }
    // Puts the real scenario in place and loads it.
    ScenarioTexts load(const std::string& realBinary) {
        binary = realBinary;
        game.write(std::string(kRelative) + "Scenario.bin", binary);
        game.write(std::string(kRelative) + "ScenarioProperties.xml", kProperties);
        ScenarioTexts texts;
        EXPECT_FALSE(LoadScenarioTexts(ctx, folder, texts));
        return texts;
    }
    std::string file(const std::string& name) const { return game.read(std::string(kRelative) + name); }
    bool exists(const std::string& name) const { return fs::exists(game.path() / (std::string(kRelative) + name)); }
    std::string readBack() {
        std::string xml;
        EXPECT_FALSE(tools::SerzReadXml(ctx, folder + "\\Scenario.bin", xml));
        return xml;
    }
    std::vector<std::string> names() const {
        std::vector<std::string> out;
        for (const auto& entry : fs::directory_iterator(game.path() / kRelative)) out.push_back(entry.path().filename().string());
        std::sort(out.begin(), out.end());
        return out;
    }
};

std::string WithoutAltEncoding(const std::string& xml) {
    return std::regex_replace(xml, std::regex(" d:alt_encoding=\"[0-9A-F]*\""), "");
}

TEST(ScenarioSave, ANoChangeSaveOfTheRealScenarioGivesTheSameXmlBack) {
    FERROLUND_READ_TESTDATA(real, "serz/scenario-game.bin");
    Fixture f;
    const ScenarioTexts texts = f.load(real);
    const SaveOutcome out = SaveScenario(f.ctx, f.folder, texts.propertiesXml, texts.scenarioXml);
    ASSERT_FALSE(out.error) << out.error->description;
    EXPECT_EQ(WithoutAltEncoding(f.readBack()), WithoutAltEncoding(texts.scenarioXml));
    // The old files are kept under the back-up names, byte for byte.
    EXPECT_EQ(out.scenarioBackup, f.folder + "\\Scenario.bak");
    EXPECT_EQ(out.propertiesBackup, f.folder + "\\ScenarioProperties.bak");
    EXPECT_EQ(f.file("Scenario.bak"), real);
    EXPECT_EQ(f.file("ScenarioProperties.bak"), kProperties);
    EXPECT_EQ(f.file("ScenarioProperties.xml"), std::string(kProperties) + "\r\n");
    const std::vector<std::string> expected = {"Scenario.bak", "Scenario.bin", "ScenarioProperties.bak",
                                               "ScenarioProperties.xml"};
    EXPECT_EQ(f.names(), expected);  // no checksum file, no saved game
}

TEST(ScenarioSave, AChangedStartTimeReadsBackChangedAndNothingElse) {
    FERROLUND_READ_TESTDATA(real, "serz/scenario-game.bin");
    Fixture f;
    ScenarioTexts texts = f.load(real);
    const std::string before = texts.scenarioXml;
    const int consists = ShiftStartTimes(texts.scenarioXml, 600);
    ASSERT_GT(consists, 0);
    const SaveOutcome out = SaveScenario(f.ctx, f.folder, texts.propertiesXml, texts.scenarioXml);
    ASSERT_FALSE(out.error) << out.error->description;
    const std::string back = f.readBack();
    std::istringstream a(WithoutAltEncoding(before)), b(WithoutAltEncoding(back));
    std::string x, y;
    int differing = 0;
    std::size_t lines = 0;
    while (std::getline(a, x)) {
        ASSERT_TRUE(std::getline(b, y));
        ++lines;
        if (x == y) continue;
        ++differing;
        EXPECT_NE(x.find("<StartTime"), std::string::npos) << x;
        EXPECT_NE(y.find("<StartTime"), std::string::npos) << y;
    }
    EXPECT_FALSE(std::getline(b, y));
    EXPECT_EQ(differing, consists);
    EXPECT_NE(back.find(">45900</StartTime>"), std::string::npos);  // 45300 + 600
}

TEST(ScenarioSave, AFailedCompileLeavesBothFilesAsTheyWere) {
    FERROLUND_READ_TESTDATA(real, "serz/scenario-game.bin");
    struct Case {
        const char* name;
        std::string xml;
        const char* message = "Serz.exe was unable to recompress";
    } cases[] = {
        {"broken XML", "<cRecordSet><Record><cConsist d:id=\"1\">"},
        {"an unknown type", "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<cRecordSet xmlns:d=\"http://www.kuju.com/TnT/"
                            "2003/Delta\" d:version=\"1.0\"><A d:type=\"sNoSuchType\">1</A></cRecordSet>"},
        {"empty", "", "Could not write"},
    };
    for (const Case& c : cases) {
        Fixture f;
        const ScenarioTexts texts = f.load(real);
        const SaveOutcome out = SaveScenario(f.ctx, f.folder, texts.propertiesXml + "<!-- changed -->", c.xml);
        ASSERT_TRUE(out.error) << c.name;
        EXPECT_NE(out.error->description.find(c.message), std::string::npos)
            << c.name << ": " << out.error->description;
        EXPECT_NE(out.error->description.find("have not been changed"), std::string::npos) << c.name;
        EXPECT_EQ(f.file("Scenario.bin"), real) << c.name;
        EXPECT_EQ(f.file("ScenarioProperties.xml"), kProperties) << c.name;
        EXPECT_EQ(f.names().size(), 2u) << c.name;
        EXPECT_TRUE(out.scenarioBackup.empty() && out.propertiesBackup.empty()) << c.name;
    }
}

TEST(ScenarioSave, ABinaryThatSaysSomethingElseIsNotPutIn) {
    FERROLUND_READ_TESTDATA(real, "serz/scenario-game.bin");
    const fs::path cli = fs::path(FERROLUND_BIN_DIR) / "ferrolund-cli";
    if (!fs::exists(cli)) GTEST_SKIP() << "ferrolund-cli is not built beside the tests";
    Fixture f;
    const ScenarioTexts texts = f.load(real);
    // A converter that compiles every text into another scenario, and reads as usual.
    const fs::path other = f.game.write("other.bin", real);
    std::string otherXml = texts.scenarioXml;
    ShiftStartTimes(otherXml, 3600);
    f.game.write("other.xml", otherXml);
    ASSERT_FALSE(tools::SerzConvert(f.ctx, f.game.system() + "/other.xml", other.string(), tools::SerzDirection::ToBinary));
    const fs::path script = f.game.write("wrong-serz.sh", "#!/bin/sh\ncase \"$2\" in bin:*) cp \"" + other.string() +
                                                              "\" \"${2#bin:}\";; *) exec \"" + cli.string() +
                                                              "\" serz \"$1\" \"$2\";; esac\n");
    fs::permissions(script, fs::perms::owner_all);
    ::setenv("FERROLUND_SERZ", script.string().c_str(), 1);
    const SaveOutcome out = SaveScenario(f.ctx, f.folder, texts.propertiesXml + " ", texts.scenarioXml);
    ::unsetenv("FERROLUND_SERZ");
    ASSERT_TRUE(out.error);
    EXPECT_NE(out.error->description.find("Serz.exe was unable to recompress"), std::string::npos) << out.error->description;
    EXPECT_EQ(f.file("Scenario.bin"), real);
    EXPECT_EQ(f.file("ScenarioProperties.xml"), kProperties);
    EXPECT_EQ(f.names().size(), 2u);
}

TEST(ScenarioSave, AReadOnlyFolderLeavesBothFilesAsTheyWere) {
    FERROLUND_READ_TESTDATA(real, "serz/scenario-game.bin");
    Fixture f;
    ScenarioTexts texts = f.load(real);
    ShiftStartTimes(texts.scenarioXml, 60);
    testing::LockedFolder lock(f.game.path() / kRelative);
    if (!lock.locked()) GTEST_SKIP() << "the folder cannot be locked against this user";
    const SaveOutcome out = SaveScenario(f.ctx, f.folder, texts.propertiesXml + " ", texts.scenarioXml);
    ASSERT_TRUE(out.error);
    EXPECT_NE(out.error->description.find("have not been changed"), std::string::npos) << out.error->description;
    EXPECT_EQ(f.file("Scenario.bin"), real);
    EXPECT_EQ(f.file("ScenarioProperties.xml"), kProperties);
    EXPECT_EQ(f.names().size(), 2u);
}

TEST(ScenarioSave, BackUpsAreNumberedAndTheFiftyFirstSaveOverwrites) {
    FERROLUND_READ_TESTDATA(real, "serz/scenario-game.bin");
    struct Case {
        int taken;  // back-up names already used, .bak counting as the first
        const char* scenarioBackup;
        const char* propertiesBackup;
    } cases[] = {{0, "Scenario.bak", "ScenarioProperties.bak"},
                 {1, "Scenario.bak1", "ScenarioProperties.bak1"},
                 {3, "Scenario.bak3", "ScenarioProperties.bak3"},
                 {51, "", ""}};
    for (const Case& c : cases) {
        Fixture f;
        ScenarioTexts texts = f.load(real);
        for (int n = 0; n < c.taken; ++n) {
            const std::string suffix = n == 0 ? ".bak" : ".BAK" + std::to_string(n);
            f.game.write(std::string(kRelative) + "Scenario" + suffix, "old");
            f.game.write(std::string(kRelative) + "ScenarioProperties" + suffix, "old");
        }
        ShiftStartTimes(texts.scenarioXml, 60);
        const SaveOutcome out = SaveScenario(f.ctx, f.folder, "<new/>", texts.scenarioXml);
        ASSERT_FALSE(out.error) << c.taken << ": " << out.error->description;
        const std::string sb = c.scenarioBackup, pb = c.propertiesBackup;
        EXPECT_EQ(out.scenarioBackup, sb.empty() ? "" : f.folder + "\\" + sb) << c.taken;
        EXPECT_EQ(out.propertiesBackup, pb.empty() ? "" : f.folder + "\\" + pb) << c.taken;
        if (!sb.empty()) {EXPECT_EQ(f.file(sb), real) << c.taken;}
        if (!pb.empty()) {EXPECT_EQ(f.file(pb), kProperties) << c.taken;}
        EXPECT_EQ(f.file("ScenarioProperties.xml"), "<new/>\r\n") << c.taken;
        EXPECT_NE(f.readBack().find(">45360</StartTime>"), std::string::npos) << c.taken;
        EXPECT_EQ(f.names().size(), 2u + 2u * static_cast<std::size_t>(std::max(c.taken, sb.empty() ? 0 : c.taken + 1)))
            << c.taken;
    }
}

TEST(ScenarioSave, AScenarioWithoutItsFilesIsRefused) {
    Fixture f;
    f.game.write(std::string(kRelative) + "ScenarioProperties.xml", kProperties);
    const SaveOutcome out = SaveScenario(f.ctx, f.folder, "<a/>", "<a/>");
    ASSERT_TRUE(out.error);
    EXPECT_EQ(f.file("ScenarioProperties.xml"), kProperties);
    EXPECT_EQ(f.names().size(), 1u);
}

TEST(ScenarioSave, RunningTheSimulatorSaysWhatIsMissing) {
    Fixture f;
    std::string program;
    std::vector<std::string> arguments;
    f.ctx.prefs.gameRoot = f.game.system() + "/nowhere";
    base::Status status = RailWorksLaunch(f.ctx, program, arguments);
    ASSERT_TRUE(status);
    EXPECT_NE(status->description.find("No simulator folder"), std::string::npos);

    f.ctx.prefs.gameRoot = f.game.system();
    const std::string path = std::getenv("PATH") ? std::getenv("PATH") : "";
    f.game.write("bin/steam", "#!/bin/sh\n");
    setenv("PATH", (f.game.system() + "/empty").c_str(), 1);
    status = RailWorksLaunch(f.ctx, program, arguments);
    ASSERT_TRUE(status);
    EXPECT_NE(status->description.find("Steam was not found"), std::string::npos);
    setenv("PATH", (f.game.system() + "/empty:" + f.game.system() + "/bin").c_str(), 1);
    status = RailWorksLaunch(f.ctx, program, arguments);
    setenv("PATH", path.c_str(), 1);
    ASSERT_FALSE(status);
    EXPECT_EQ(program, f.game.system() + "/bin/steam");
    EXPECT_EQ(arguments, (std::vector<std::string>{"-applaunch", "24000"}));
}

}  // namespace
}  // namespace ferrolund::scenarios
