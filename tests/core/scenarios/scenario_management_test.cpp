#include "scenarios/scenario_management.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "core/tools/testdata_file.h"
#include "scenarios/scenario_texts.h"
#include "support/locked_folder.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"
#include "tools/serz_convert.h"
#include "tools/text_search.h"

namespace ferrolund::scenarios {
namespace {

namespace fs = std::filesystem;
const std::string kRoute = "Route-é";

// A scenario's XML: one consist per entry, holding that many vehicles.
std::string ScenarioXml(const std::vector<int>& consists) {
    std::string xml =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<cRecordSet xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" "
        "d:version=\"1.0\" d:id=\"1\">\r\n<Record>\r\n";
    int id = 100;
    for (int vehicles : consists) {
        xml += "<cConsist d:id=\"" + std::to_string(id++) + "\">\r\n<RailVehicles>\r\n";
        for (int v = 0; v < vehicles; ++v)
            xml += "<cOwnedEntity d:id=\"" + std::to_string(id++) + "\">\r\n<Name d:type=\"cDeltaString\">Car " +
                   std::to_string(v) + "</Name>\r\n</cOwnedEntity>\r\n";
        xml += "</RailVehicles>\r\n<ServiceName d:type=\"cDeltaString\">S" + std::to_string(id) +
               "</ServiceName>\r\n</cConsist>\r\n";
    }
    return xml + "</Record>\r\n</cRecordSet>\r\n";
}

std::string Properties(const std::string& name, const std::string& scenarioClass) {
    return "<cScenarioProperties><DevString>g-" + name + "</DevString><DisplayName><Localisation-cUserLocalisedString>"
           "<English>" + name + "</English></Localisation-cUserLocalisedString></DisplayName>"
           "<ScenarioClass d:type=\"cDeltaString\">" + scenarioClass + "</ScenarioClass><WorkshopID>0</WorkshopID>"
           "</cScenarioProperties>";
}

struct Fixture {
    testing::TempFolder game;
    testing::ScriptedUi ui;
    app::AppContext ctx;
    Fixture() {
        ctx.prefs.gameRoot = game.system();
        ctx.appRoot = (game.path() / "app").string();
        fs::create_directories(game.path() / "app");
        ctx.ui = &ui;
    }
    std::string rel(const std::string& scenario, const std::string& file = {}) const {
        return "Content/Routes/" + kRoute + "/Scenarios/" + scenario + (file.empty() ? "" : "/" + file);
    }
    fs::path host(const std::string& scenario, const std::string& file = {}) const {
        return game.path() / rel(scenario, file);
    }
    std::string folder(const std::string& scenario) const { return ScenarioFolderPath(ctx, kRoute, scenario); }
    // Scenario.bin compiled from the XML.
    std::string writeBinary(const std::string& scenario, const std::string& xml) {
        const auto text = game.write("app/source.xml", xml);
        fs::create_directories(host(scenario));
        const std::string target = folder(scenario) + "\\Scenario.bin";
        EXPECT_FALSE(tools::SerzConvert(ctx, text.string(), target, tools::SerzDirection::ToBinary));
        return game.read(rel(scenario, "Scenario.bin"));
    }
    std::string xmlOf(const std::string& scenario) {
        std::string xml;
        EXPECT_FALSE(tools::SerzReadXml(ctx, folder(scenario) + "\\Scenario.bin", xml));
        return xml;
    }
};

long Count(std::string_view text, std::string_view what) {
    long n = 0;
    for (long at = tools::InStr(1, text, what); at > 0; at = tools::InStr(at + 1, text, what)) ++n;
    return n;
}

TEST(EmptyConsists, CutsExactlyTheConsistsWithoutVehicles) {
    struct Case {
        const char* name;
        std::string xml;
        std::string expected;
        int removed, kept;
    } cases[] = {
        {"none at all", "<Record></Record>", "<Record></Record>", 0, 0},
        {"all full", "<cConsist d:id='1'><cOwnedEntity/></cConsist>\n<cConsist d:id='2'><cOwnedEntity/></cConsist>\n",
         "<cConsist d:id='1'><cOwnedEntity/></cConsist>\n<cConsist d:id='2'><cOwnedEntity/></cConsist>\n", 0, 2},
        {"first empty", "<R><cConsist d:id='1'><X/></cConsist>\n<cConsist d:id='2'><cOwnedEntity/></cConsist>\n</R>",
         "<R><cConsist d:id='2'><cOwnedEntity/></cConsist>\n</R>", 1, 1},
        {"two empty in a row",
         "<R><cConsist d:id='1'><cOwnedEntity/></cConsist>\n<cConsist d:id='2'></cConsist>\n<cConsist d:id='3'>"
         "</cConsist>\n<cConsist d:id='4'><cOwnedEntity/></cConsist>\n</R>",
         "<R><cConsist d:id='1'><cOwnedEntity/></cConsist>\n<cConsist d:id='4'><cOwnedEntity/></cConsist>\n</R>", 2, 2},
        {"last empty, found through its closing tag",
         "<R><cConsist d:id='1'><cOwnedEntity/></cConsist>\n<cConsist d:id='2'><X/></cConsist>\n</R>",
         "<R><cConsist d:id='1'><cOwnedEntity/></cConsist>\n</R>", 1, 1},
        {"last empty at the very end of the text", "<cConsist d:id='1'></cConsist>", "", 1, 0},
        {"tags in any case", "<R><CCONSIST d:id='1'><COWNEDENTITY/></CCONSIST>\n<cconsist d:id='2'></cconsist>\n</R>",
         "<R><CCONSIST d:id='1'><COWNEDENTITY/></CCONSIST>\n</R>", 1, 1},
        {"an unclosed last consist stays", "<R><cConsist d:id='1'><X/>", "<R><cConsist d:id='1'><X/>", 0, 0},
    };
    for (const Case& c : cases) {
        const ConsistCut cut = CutEmptyConsists(c.xml);
        EXPECT_EQ(cut.xml, c.expected) << c.name;
        EXPECT_EQ(cut.removed, c.removed) << c.name;
        EXPECT_EQ(cut.kept, c.kept) << c.name;
    }
}

TEST(EmptyConsists, ScenarioIsRewrittenAndTheOldOneKept) {
    Fixture f;
    const std::string old = f.writeBinary("Szenário", ScenarioXml({2, 0, 3, 0, 1, 0}));
    const CleanOutcome outcome = RemoveEmptyConsists(f.ctx, f.folder("Szenário"));
    ASSERT_FALSE(outcome.error) << outcome.error->description;
    EXPECT_EQ(outcome.removed, 3);
    EXPECT_EQ(outcome.backup, f.folder("Szenário") + "\\Scenario.bak");
    EXPECT_EQ(f.game.read(f.rel("Szenário", "Scenario.bak")), old);
    const std::string now = f.xmlOf("Szenário");
    EXPECT_EQ(Count(now, "<cConsist d"), 3);
    EXPECT_EQ(Count(now, "<cOwnedEntity"), 6);
    // Nothing left behind in the scratch folder but the text for inspection.
    EXPECT_FALSE(fs::exists(f.game.path() / "app/TempFiles/Scenario.bin"));

    // A second run finds nothing and changes nothing.
    const CleanOutcome again = RemoveEmptyConsists(f.ctx, f.folder("Szenário"));
    EXPECT_FALSE(again.error);
    EXPECT_EQ(again.removed, 0);
    EXPECT_FALSE(fs::exists(f.host("Szenário", "Scenario.bak1")));
}

TEST(EmptyConsists, RealScenarioKeepsEveryVehicle) {
    FERROLUND_READ_TESTDATA(binary, "serz/scenario-small.bin");
    FERROLUND_READ_TESTDATA(xml, "serz/scenario-small.xml");
    Fixture f;
    // The real scenario with two empty consists added after its last one.
    const std::size_t end = xml.rfind("</cConsist>") + 11;
    xml.insert(end, "\r\n<cConsist d:id=\"77\"><RailVehicles></RailVehicles></cConsist>"
                    "\r\n<cConsist d:id=\"78\"><RailVehicles></RailVehicles></cConsist>");
    f.writeBinary("Real", xml);
    const CleanOutcome outcome = RemoveEmptyConsists(f.ctx, f.folder("Real"));
    ASSERT_FALSE(outcome.error) << outcome.error->description;
    EXPECT_EQ(outcome.removed, 2);
    std::string original;
    f.game.write("app/real.bin", binary);
    ASSERT_FALSE(tools::SerzReadXml(f.ctx, (f.game.path() / "app/real.bin").string(), original));
    const std::string now = f.xmlOf("Real");
    EXPECT_EQ(Count(now, "<cConsist d"), Count(original, "<cConsist d"));
    EXPECT_EQ(Count(now, "<cOwnedEntity"), Count(original, "<cOwnedEntity"));
}

TEST(EmptyConsists, BadInputsLeaveTheScenarioAlone) {
    Fixture f;
    // The cut of a tag that only begins like a consist breaks the text: the compile fails.
    const std::string broken = f.writeBinary(
        "Broken", ScenarioXml({1}).insert(ScenarioXml({1}).find("</Record>"),
                                          "<cConsistInfo d:id=\"9\"><N d:type=\"cDeltaString\">x</N></cConsistInfo>\r\n"));
    f.game.write(f.rel("Text", "Scenario.bin"), "this is no scenario");
    fs::create_directories(f.host("NoBin"));
    const char* cases[] = {"Broken", "Text", "NoBin", "Gone"};
    for (const char* scenario : cases) {
        const std::string before = f.game.read(f.rel(scenario, "Scenario.bin"));
        const CleanOutcome outcome = RemoveEmptyConsists(f.ctx, f.folder(scenario));
        ASSERT_TRUE(outcome.error) << scenario;
        EXPECT_FALSE(outcome.error->description.empty());
        EXPECT_EQ(outcome.removed, 0);
        EXPECT_EQ(f.game.read(f.rel(scenario, "Scenario.bin")), before) << scenario;
        EXPECT_FALSE(fs::exists(f.host(scenario, "Scenario.bak"))) << scenario;
    }
    EXPECT_EQ(f.game.read(f.rel("Broken", "Scenario.bin")), broken);
}

TEST(EmptyConsists, LockedFolderLosesNothing) {
    Fixture f;
    const std::string old = f.writeBinary("Locked", ScenarioXml({1, 0}));
    testing::LockedFolder lock(f.host("Locked"));
    if (!lock.locked()) GTEST_SKIP() << "the folder cannot be locked against this user";
    const CleanOutcome outcome = RemoveEmptyConsists(f.ctx, f.folder("Locked"));
    EXPECT_TRUE(outcome.error);
    EXPECT_EQ(f.game.read(f.rel("Locked", "Scenario.bin")), old);
}

TEST(EmptyConsists, CommandTellsTheCount) {
    Fixture f;
    f.writeBinary("Told", ScenarioXml({0, 1, 0}));
    RemoveEmptyConsistsCommand(f.ctx, f.folder("Told"));
    RemoveEmptyConsistsCommand(f.ctx, f.folder("Told"));
    RemoveEmptyConsistsCommand(f.ctx, f.folder("Missing"));
    ASSERT_EQ(f.ui.shown.size(), 3u);
    EXPECT_EQ(f.ui.shown[0].text, "2 empty consist(s) removed. The old Scenario.bin is now Scenario.bak.");
    EXPECT_EQ(f.ui.shown[1].text, "No empty consists were found in this scenario.");
    EXPECT_NE(f.ui.shown[2].text.find("Scenario.bin"), std::string::npos);
}

TEST(MakeStandard, OnlyTheChosenClassChanges) {
    struct Case {
        const char* scenarioClass;
        StandardFrom from;
        bool changes;
    } cases[] = {
        {"eCareerScenarioClass", StandardFrom::Career, true},
        {"eTimetableScenarioClass", StandardFrom::Career, false},
        {"eStandardScenarioClass", StandardFrom::Career, false},
        {"eFreeRoamScenarioClass", StandardFrom::Career, false},
        {"eTemplateScenarioClass", StandardFrom::Career, false},
        {"eTimetableScenarioClass", StandardFrom::Timetable, true},
        {"eCareerScenarioClass", StandardFrom::Timetable, false},
        {"ETIMETABLESCENARIOCLASS", StandardFrom::Timetable, true},
    };
    for (const Case& c : cases) {
        Fixture f;
        const std::string old = Properties("Fährt", c.scenarioClass);
        f.game.write(f.rel("Szenário", "ScenarioProperties.xml"), old);
        const int changed = MakeScenariosStandard(f.ctx, {f.folder("Szenário")}, c.from);
        const std::string now = f.game.read(f.rel("Szenário", "ScenarioProperties.xml"));
        const std::string label = std::string(c.scenarioClass) + (c.from == StandardFrom::Career ? " career" : " tt");
        EXPECT_EQ(changed, c.changes ? 1 : 0) << label;
        ASSERT_EQ(f.ui.texts(), std::vector<std::string>{"All selected scenarios are now 'Standard'"}) << label;
        if (c.changes) {
            EXPECT_EQ(now, Properties("Fährt", "eStandardScenarioClass")) << label;
            EXPECT_EQ(f.game.read(f.rel("Szenário", "ScenarioProperties.bak")), old) << label;
        } else {
            EXPECT_EQ(now, old) << label;
            EXPECT_FALSE(fs::exists(f.host("Szenário", "ScenarioProperties.bak"))) << label;
        }
    }
}

TEST(MakeStandard, NumberedBackupAndFaultsLoseNothing) {
    Fixture f;
    const std::string old = Properties("A", "eCareerScenarioClass");
    f.game.write(f.rel("Two", "ScenarioProperties.xml"), old);
    f.game.write(f.rel("Two", "ScenarioProperties.bak"), "older");
    f.game.write(f.rel("Locked", "ScenarioProperties.xml"), old);
    fs::create_directories(f.host("Empty"));
    testing::LockedFolder lock(f.host("Locked"));
    const int changed =
        MakeScenariosStandard(f.ctx, {f.folder("Empty"), f.folder("Locked"), f.folder("Two")}, StandardFrom::Career);
    EXPECT_EQ(f.game.read(f.rel("Two", "ScenarioProperties.bak1")), old);
    EXPECT_EQ(f.game.read(f.rel("Two", "ScenarioProperties.bak")), "older");
    if (lock.locked()) {
        EXPECT_EQ(changed, 1);
        EXPECT_EQ(f.game.read(f.rel("Locked", "ScenarioProperties.xml")), old);
    }
    EXPECT_EQ(f.ui.texts().back(), "All selected scenarios are now 'Standard'");
}

TEST(Revert, FirstBackupBecomesTheScenarioAndNumberedOnesGo) {
    struct Case {
        const char* name;
        std::vector<std::string> files;     // each file holds its own name
        std::vector<std::string> after;     // the files left, sorted
        std::string binary;                 // what Scenario.bin then holds
        int deleted, reverted;
    } cases[] = {
        {"all kinds", {"Scenario.bin", "Scenario.bak", "Scenario.bak1", "Scenario.bak3", "ScenarioProperties.xml"},
         {"Scenario.bin", "ScenarioProperties.xml"}, "Scenario.bak", 2, 1},
        {"no .bak keeps the .bin", {"Scenario.bin", "Scenario.bak1", "Scenario.bak50"}, {"Scenario.bin"},
         "Scenario.bin", 2, 0},
        {"no .bin keeps the .bak", {"Scenario.bak", "Scenario.bak2"}, {"Scenario.bak"}, "", 1, 0},
        {"names in another case", {"scenario.BIN", "SCENARIO.bak", "Scenario.BAK7"}, {"scenario.BIN"}, "SCENARIO.bak", 1,
         1},
        {"beyond fifty is no back-up of this rule", {"Scenario.bin", "Scenario.bak51"},
         {"Scenario.bak51", "Scenario.bin"}, "Scenario.bin", 0, 0},
    };
    for (const Case& c : cases) {
        Fixture f;
        for (const std::string& file : c.files) f.game.write(f.rel("Szenário", file), file);
        const RevertOutcome outcome = RevertScenario(f.folder("Szenário"));
        EXPECT_FALSE(outcome.error) << c.name;
        EXPECT_EQ(outcome.backupsDeleted, c.deleted) << c.name;
        EXPECT_EQ(outcome.reverted, c.reverted) << c.name;
        std::vector<std::string> left;
        for (const auto& entry : fs::directory_iterator(f.host("Szenário"))) left.push_back(entry.path().filename());
        std::sort(left.begin(), left.end());
        EXPECT_EQ(left, c.after) << c.name;
        for (const std::string& file : c.after) {
            if (tools::InStr(file, "Scenario.bin") != 1) continue;
            EXPECT_EQ(f.game.read(f.rel("Szenário", file)), c.binary) << c.name;
        }
    }
}

TEST(Revert, WholeRouteAndLockedFolder) {
    Fixture f;
    for (const char* s : {"One", "Two", "Locked"}) {
        f.game.write(f.rel(s, "Scenario.bin"), "new");
        f.game.write(f.rel(s, "Scenario.bak"), "default");
        f.game.write(f.rel(s, "Scenario.bak1"), "middle");
    }
    testing::LockedFolder lock(f.host("Locked"));
    if (!lock.locked()) GTEST_SKIP() << "the folder cannot be locked against this user";
    const RevertOutcome outcome = RevertRoute(f.ctx, kRoute);
    EXPECT_TRUE(outcome.error);
    EXPECT_EQ(outcome.reverted, 2);
    EXPECT_EQ(outcome.backupsDeleted, 2);
    EXPECT_EQ(f.game.read(f.rel("One", "Scenario.bin")), "default");
    EXPECT_EQ(f.game.read(f.rel("Two", "Scenario.bin")), "default");
    EXPECT_EQ(f.game.read(f.rel("Locked", "Scenario.bin")), "new");
    EXPECT_EQ(f.game.read(f.rel("Locked", "Scenario.bak")), "default");
}

TEST(CurrentSave, SaveAsCopiesTheSaveAndItsChecksum) {
    struct Case {
        const char* name;
        bool md5;
        std::string chosen;    // below the scenario folder
        std::string saved;     // the file that receives the save
        bool targetExists;
    } cases[] = {
        {"with checksum", true, "Morning.bin", "Morning.bin", false},
        {"without checksum the save alone", false, "Evening.bin", "Evening.bin", false},
        {"ending added", true, "Noon", "Noon.bin", false},
        {"older copy kept", true, "Morning.bin", "Morning.bin", true},
    };
    for (const Case& c : cases) {
        Fixture f;
        f.game.write(f.rel("Szenário", "CurrentSave.bin"), "state");
        if (c.md5) f.game.write(f.rel("Szenário", "CurrentSave.bin.MD5"), "sum");
        if (c.targetExists) f.game.write(f.rel("Szenário", c.saved), "old state");
        f.ui.files.push_back(f.folder("Szenário") + "\\" + c.chosen);
        const std::string saved = SaveCurrentSaveAs(f.ctx, f.folder("Szenário"));
        EXPECT_EQ(saved, f.folder("Szenário") + "\\" + c.saved) << c.name;
        EXPECT_EQ(f.ui.dialogTitles, std::vector<std::string>{"Save CurrentSave.bin as"}) << c.name;
        EXPECT_EQ(f.game.read(f.rel("Szenário", c.saved)), "state") << c.name;
        EXPECT_EQ(fs::exists(f.host("Szenário", c.saved + ".MD5")), c.md5) << c.name;
        if (c.md5) {
            EXPECT_EQ(f.game.read(f.rel("Szenário", c.saved + ".MD5")), "sum") << c.name;
        }
        if (c.targetExists) {
            EXPECT_EQ(f.game.read(f.rel("Szenário", c.saved + ".bak")), "old state") << c.name;
        }
    }
}

TEST(CurrentSave, SaveAsWithoutSaveOrChoiceDoesNothing) {
    Fixture f;
    fs::create_directories(f.host("Szenário"));
    EXPECT_EQ(SaveCurrentSaveAs(f.ctx, f.folder("Szenário")), "");
    EXPECT_EQ(f.ui.texts(), std::vector<std::string>{"There is no CurrentSave.bin file for this scenario."});
    f.game.write(f.rel("Szenário", "CurrentSave.bin"), "state");
    EXPECT_EQ(SaveCurrentSaveAs(f.ctx, f.folder("Szenário")), "");  // the dialog was cancelled
    EXPECT_EQ(fs::directory_iterator(f.host("Szenário"))->path().filename(), "CurrentSave.bin");

    // A copy kept in a locked folder: the older copy there stays, the save is untouched.
    f.game.write("Kept/Copy.bin", "old copy");
    testing::LockedFolder lock(f.game.path() / "Kept");
    if (!lock.locked()) GTEST_SKIP() << "the folder cannot be locked against this user";
    f.ui.files.push_back((f.game.path() / "Kept/Copy.bin").string());
    EXPECT_EQ(SaveCurrentSaveAs(f.ctx, f.folder("Szenário")), "");
    EXPECT_EQ(f.game.read("Kept/Copy.bin"), "old copy");
    EXPECT_EQ(f.game.read(f.rel("Szenário", "CurrentSave.bin")), "state");
}

TEST(CurrentSave, OverwriteKeepsTheChecksumInStep) {
    struct Case {
        const char* name;
        base::Answer answer;
        bool selectedMd5;
        std::string save, md5;  // CurrentSave.bin and its .MD5 afterwards ("" = absent)
    } cases[] = {
        {"no leaves all", base::Answer::No, true, "current", "current sum"},
        {"with checksum", base::Answer::Yes, true, "picked", "picked sum"},
        {"without checksum the old one goes", base::Answer::Yes, false, "picked", ""},
    };
    for (const Case& c : cases) {
        Fixture f;
        f.game.write(f.rel("Szenário", "CurrentSave.bin"), "current");
        f.game.write(f.rel("Szenário", "CurrentSave.bin.MD5"), "current sum");
        f.game.write(f.rel("Szenário", "Picked.bin"), "picked");
        if (c.selectedMd5) f.game.write(f.rel("Szenário", "Picked.bin.MD5"), "picked sum");
        f.ui.answers.push_back(c.answer);
        const bool done = OverwriteCurrentSave(f.ctx, f.folder("Szenário"), f.folder("Szenário") + "\\Picked.bin");
        EXPECT_EQ(done, c.answer == base::Answer::Yes) << c.name;
        ASSERT_EQ(f.ui.shown.size(), 1u);
        EXPECT_EQ(f.ui.shown[0].text,
                  "This operation will delete your CurrentSave.bin file for this Scenario and replace it\r\n"
                  "with the selected file. Proceed?");
        EXPECT_EQ(f.game.read(f.rel("Szenário", "CurrentSave.bin")), c.save) << c.name;
        EXPECT_EQ(fs::exists(f.host("Szenário", "CurrentSave.bin.MD5")), !c.md5.empty()) << c.name;
        if (!c.md5.empty()) {
            EXPECT_EQ(f.game.read(f.rel("Szenário", "CurrentSave.bin.MD5")), c.md5) << c.name;
        }
        if (done) {  // the old pair is kept, not thrown away
            EXPECT_EQ(f.game.read(f.rel("Szenário", "CurrentSave.bin.bak")), "current") << c.name;
            EXPECT_EQ(f.game.read(f.rel("Szenário", "CurrentSave.bin.MD5.bak")), "current sum") << c.name;
        }
    }
}

TEST(CurrentSave, OverwriteFaultsLoseNothing) {
    Fixture f;
    f.game.write(f.rel("Szenário", "CurrentSave.bin"), "current");
    f.game.write(f.rel("Picks", "Picked.bin"), "picked");
    f.ui.answers = {base::Answer::Yes, base::Answer::Yes};
    // No file selected, a selected file that is gone, then a locked folder.
    EXPECT_FALSE(OverwriteCurrentSave(f.ctx, f.folder("Szenário"), ""));
    EXPECT_EQ(f.ui.texts().back(), "Please select a saved file first.");
    EXPECT_FALSE(OverwriteCurrentSave(f.ctx, f.folder("Szenário"), f.folder("Picks") + "\\Gone.bin"));
    testing::LockedFolder lock(f.host("Szenário"));
    if (!lock.locked()) GTEST_SKIP() << "the folder cannot be locked against this user";
    EXPECT_FALSE(OverwriteCurrentSave(f.ctx, f.folder("Szenário"), f.folder("Picks") + "\\Picked.bin"));
    EXPECT_EQ(f.game.read(f.rel("Szenário", "CurrentSave.bin")), "current");
}

TEST(CurrentSave, RunPutsTheSaveInPlaceAndStartsTheSimulator) {
    struct Case {
        std::string gameRoot;
        const char* id;
    } ids[] = {{"/home/x/Steam/steamapps/common/RailWorks", "24000"},
               {"C:\\Steam\\steamapps\\common\\RailWorks Beta", "24010"},
               {"/games/railworks DEV", "24020"}};
    for (const Case& c : ids) EXPECT_EQ(SimulatorAppId(c.gameRoot), c.id) << c.gameRoot;

    Fixture f;
    f.game.write(f.rel("Szenário", "CurrentSave.bin"), "current");
    f.game.write(f.rel("Szenário", "Picked.bin"), "picked");
    std::vector<std::string> started;
    auto launcher = [&started](const std::string& id) -> base::Status {
        started.push_back(id);
        return {};
    };
    f.ui.answers = {base::Answer::No};
    EXPECT_FALSE(RunWithSave(f.ctx, f.folder("Szenário"), f.folder("Szenário") + "\\Picked.bin", launcher));
    EXPECT_TRUE(started.empty());
    EXPECT_EQ(f.game.read(f.rel("Szenário", "CurrentSave.bin")), "current");
    f.ui.answers = {base::Answer::Yes};
    EXPECT_TRUE(RunWithSave(f.ctx, f.folder("Szenário"), f.folder("Szenário") + "\\Picked.bin", launcher));
    EXPECT_EQ(started, std::vector<std::string>{"24000"});
    EXPECT_EQ(f.game.read(f.rel("Szenário", "CurrentSave.bin")), "picked");
    EXPECT_EQ(f.ui.shown[0].text.rfind("This operation will delete your CurrentSave.bin file for this Scenario. ", 0), 0u);

    // No Steam: the save is in place, and the user is told why nothing started.
    f.ui.answers = {base::Answer::Yes};
    auto noSteam = [](const std::string&) -> base::Status { return base::RunError{53, "Steam was not found."}; };
    EXPECT_FALSE(RunWithSave(f.ctx, f.folder("Szenário"), f.folder("Szenário") + "\\Picked.bin", noSteam));
    EXPECT_EQ(f.ui.texts().back(), "Steam was not found.");
}

TEST(CurrentSave, NoSteamOnThePathIsSaid) {
    const char* old = std::getenv("PATH");
    const std::string saved = old ? old : "";
    testing::TempFolder empty;
    ::setenv("PATH", empty.system().c_str(), 1);
    const base::Status status = LaunchWithSteam("24000");
    ::setenv("PATH", saved.c_str(), 1);
    ASSERT_TRUE(status);
    EXPECT_EQ(status->description, "Steam was not found on this computer, so RailWorks cannot be started.");
}

TEST(DeleteScenario, AsksFirstAndKeepsWhatItCannotDelete) {
    Fixture f;
    for (const char* s : {"Szenário", "Keep", "Locked"}) f.game.write(f.rel(s, "Scenario.bin"), "bin");
    EXPECT_EQ(DeleteScenarios(f.ctx, {}), 0);
    EXPECT_EQ(f.ui.texts().back(), "You do not appear to have selected a scenario?");
    f.ui.answers = {base::Answer::No};
    EXPECT_EQ(DeleteScenarios(f.ctx, {f.folder("Szenário")}), 0);
    EXPECT_EQ(f.ui.texts().back(), "Do you really wish to delete the selected scenario(s)?");
    EXPECT_TRUE(fs::exists(f.host("Szenário", "Scenario.bin")));
    f.ui.answers = {base::Answer::Yes};
    EXPECT_EQ(DeleteScenarios(f.ctx, {f.folder("Szenário")}), 1);
    EXPECT_FALSE(fs::exists(f.host("Szenário")));
    EXPECT_TRUE(fs::exists(f.host("Keep", "Scenario.bin")));

    testing::LockedFolder lock(f.host("Locked"));
    if (!lock.locked()) GTEST_SKIP() << "the folder cannot be locked against this user";
    f.ui.answers = {base::Answer::Yes};
    EXPECT_EQ(DeleteScenarios(f.ctx, {f.folder("Locked")}), 0);
    EXPECT_TRUE(fs::exists(f.host("Locked", "Scenario.bin")));
}

TEST(InvalidScenarios, EachFaultIsNamed) {
    Fixture f;
    const std::string good = Properties("Good", "eStandardScenarioClass");
    f.writeBinary("Good", ScenarioXml({1}));
    f.game.write(f.rel("Good", "ScenarioProperties.xml"), good);
    f.writeBinary("NoProps", ScenarioXml({1}));
    f.game.write(f.rel("Broken", "ScenarioProperties.xml"), "<cScenarioProperties><DisplayName>");
    f.game.write(f.rel("NoName", "ScenarioProperties.xml"), "<a><ScenarioClass>eStandardScenarioClass</ScenarioClass></a>");
    f.game.write(f.rel("NoClass", "ScenarioProperties.xml"), "<a><DisplayName>x</DisplayName></a>");
    f.game.write(f.rel("NoBin", "ScenarioProperties.xml"), good);
    f.game.write(f.rel("BadBin", "ScenarioProperties.xml"), good);
    f.game.write(f.rel("BadBin", "Scenario.bin"), "SERZ");
    const std::vector<InvalidScenario> invalid = FindInvalidScenarios(f.ctx, kRoute);
    struct Expected {
        const char* folder;
        const char* reason;  // the start of it
    } expected[] = {{"BadBin", "Scenario.bin does not convert"},
                    {"Broken", "ScenarioProperties.xml is not well-formed"},
                    {"NoBin", "Scenario.bin is missing"},
                    {"NoClass", "ScenarioProperties.xml has no ScenarioClass"},
                    {"NoName", "ScenarioProperties.xml has no DisplayName"},
                    {"NoProps", "ScenarioProperties.xml is missing"}};
    ASSERT_EQ(invalid.size(), std::size(expected));
    for (std::size_t i = 0; i < invalid.size(); ++i) {
        EXPECT_EQ(invalid[i].folder, expected[i].folder);
        EXPECT_EQ(invalid[i].reason.rfind(expected[i].reason, 0), 0u) << invalid[i].reason;
    }
    EXPECT_TRUE(FindInvalidScenarios(f.ctx, "No Such Route").empty());
    // "&Abort" stops the walk before the next scenario.
    f.ctx.abortFlag = true;
    EXPECT_TRUE(FindInvalidScenarios(f.ctx, kRoute).empty());
}

TEST(SavedCopiesList, BackupsAndSavesOnly) {
    Fixture f;
    for (const char* file : {"Scenario.bin", "Scenario.bak", "Scenario.bak12", "ScenarioProperties.xml",
                             "ScenarioProperties.BAK3", "CurrentSave.bin", "CurrentSave.bin.MD5", "Morgen früh.bin",
                             "ScenarioNetworkProperties.bin", "notes.bakery"})
        f.game.write(f.rel("Szenário", file), "x");
    EXPECT_EQ(SavedCopies(f.folder("Szenário")),
              (std::vector<std::string>{"Morgen früh.bin", "Scenario.bak", "Scenario.bak12", "ScenarioProperties.BAK3"}));
}

}  // namespace
}  // namespace ferrolund::scenarios
