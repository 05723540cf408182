#include "assets/loco_scripts.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <pugixml.hpp>

#include "core/sample/sample_fixture.h"
#include "serz/codec.h"
#include "stock_fixture.h"
#include "support/locked_folder.h"

namespace ferrolund::assets {
namespace {

namespace fs = std::filesystem;
using testing::Child;
using testing::Game;
using testing::ShippedTemplate;
using testing::Upright;
using testing::Vehicle;
using testing::VehicleXml;
using Verdict = TransformResult::Verdict;

std::vector<Child> Children(const std::vector<std::pair<std::string, std::string>>& named) {
    std::vector<Child> children;
    for (const auto& [name, blueprint] : named) children.emplace_back(name, Upright("0", "4", "1"), blueprint);
    return children;
}

TEST(FindExhausts, TwoAtMostAndNeverTheSameTwice) {
    struct Case {
        std::vector<std::pair<std::string, std::string>> children;
        std::vector<std::string> names;
        bool ambiguous;
    };
    const Case cases[] = {
        {{{"EngineSound", ""}, {"Exhaust", ""}}, {"Exhaust"}, false},
        {{{"Exhaust1", ""}, {"Exhaust2", ""}, {"Exhaust3", ""}}, {"Exhaust1", "Exhaust2"}, false},
        {{{"Abgas", "Particles\\Diesel Exhaust.xml"}, {"Clag", ""}}, {"Abgas", "Clag"}, false},
        {{{"Clag1", ""}, {"Lamp", ""}, {"Clag2", ""}}, {"Clag1", "Clag2"}, false},
        {{{"Smoke", ""}}, {}, false},
        {{{"Exhaust", ""}, {"exhaust", ""}}, {"Exhaust", "exhaust"}, true},
        {{{"Smoke", "Particles\\Exhaust.xml"}, {"Smoke", "Particles\\Exhaust.xml"}}, {"Smoke", "Smoke"}, true},
    };
    for (const Case& c : cases) {
        Vehicle v;
        v.children = Children(c.children);
        const ExhaustNames found = FindExhausts(VehicleXml(v));
        EXPECT_EQ(found.names, c.names) << c.children.front().first;
        EXPECT_EQ(found.ambiguous, c.ambiguous) << c.children.front().first;
    }
}

TEST(EngineScript, OneOrTwoExhaustsFillTheirTemplate) {
    const LocoScriptTemplates t{ShippedTemplate("locoScript1.txt"), ShippedTemplate("EngScript1.lua"),
                                ShippedTemplate("EngScript2.lua"), ShippedTemplate("DefaultAudio.lua")};
    const std::string one = EngineScript(t, {"Exhaust"});
    EXPECT_NE(one.find("Call(\"Exhaust:SetEmitterActive\", 1)"), std::string::npos);
    const std::string two = EngineScript(t, {"Auspuff vorn", "Auspuff hinten"});
    EXPECT_NE(two.find("SetExhaust(\"Auspuff vorn\", delta)"), std::string::npos);
    EXPECT_NE(two.find("SetExhaust(\"Auspuff hinten\", delta)"), std::string::npos);
    for (const std::string& script : {one, two}) {
        EXPECT_EQ(script.find("aaaaaa"), std::string::npos);
        EXPECT_EQ(script.find("bbbbbb"), std::string::npos);
    }
}

struct LocoGame : Game {
    const std::string loco = "Kuju\\RailSimulator\\RailVehicles\\Diesel\\Class66\\Engine\\Class 66 Grün.bin";
    const std::string sim = "Kuju\\RailSimulator\\RailVehicles\\Diesel\\Class66\\Simulation\\Sim.bin";
    const std::string locoScript = "Kuju\\RailSimulator\\RailVehicles\\Diesel\\Class66\\Engine\\Class66.lua";
    const std::string simScript = "Kuju\\RailSimulator\\RailVehicles\\Diesel\\Class66\\Simulation\\EngineSim.lua";
    LocoGame() {
        useTemplates();
        Vehicle v;
        v.name = "Class 66";
        v.children = Children({{"EngineSound", "Audio\\Class66.xml"}, {"Exhaust1", ""}, {"Exhaust2", ""}});
        v.controls = {{"Regulator", "eFalse"}, {"Reverser", "eFalse"}};
        v.simulation = "RailVehicles\\Diesel\\Class66\\Simulation\\Sim.xml";
        v.script = "Kuju\\RailSimulator\\RailVehicles\\Diesel\\Class66\\Engine\\Class66";
        put(loco, VehicleXml(v));
        put(sim, "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
                 "<cBlueprintLoader xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\">\r\n"
                 "\t<Blueprint>\r\n\t\t<cEngineSimBlueprint>\r\n"
                 "\t\t\t<Name d:type=\"cDeltaString\">Sim</Name>\r\n"
                 "\t\t\t<ScriptComponent>\r\n\t\t\t\t<cScriptComponentBlueprint>\r\n"
                 "\t\t\t\t\t<Name d:type=\"cDeltaString\">Kuju\\RailSimulator\\RailVehicles\\Diesel\\Class66\\Simulation\\EngineSim</Name>\r\n"
                 "\t\t\t\t</cScriptComponentBlueprint>\r\n\t\t\t</ScriptComponent>\r\n"
                 "\t\t</cEngineSimBlueprint>\r\n\t</Blueprint>\r\n</cBlueprintLoader>\r\n");
        folder.write(fs::relative(onDisk(locoScript), folder.path()).string(), "-- the loco's old script");
        folder.write(fs::relative(onDisk(simScript), folder.path()).string(), "-- the simulation's old script");
    }
    AssetRow locoRow() const {
        return row("Kuju", "RailSimulator", "RailVehicles\\Diesel\\Class66\\Engine\\Class 66 Grün.bin", "Class 66");
    }
};

TEST(AddLocoScript, GivesTheControlsTheScriptsAndKeepsTheOldScripts) {
    LocoGame game;
    const std::string before = game.bytesOf(game.loco);
    game.okToWarning();
    const TransformOutcome out = AddLocoScript(game.ctx, {game.locoRow()});
    ASSERT_EQ(out.rows.size(), 1u);
    ASSERT_EQ(out.rows[0].reason, "") << out.report;
    EXPECT_EQ(out.rows[0].companions.size(), 2u);
    EXPECT_EQ(game.bytesOf(game.loco + ".bak"), before);

    const std::string xml = game.xmlOf(game.loco);
    pugi::xml_document doc;
    ASSERT_TRUE(doc.load_string(xml.c_str()));
    std::vector<std::string> controls;
    for (const auto& n : doc.select_nodes("//ControlValues/*")) {
        controls.push_back(std::string(n.node().child_value("ControlName")) + "=" + n.node().child_value("ApplyToConsist"));
    }
    EXPECT_EQ(controls, (std::vector<std::string>{"RPM=eFalse", "RPMDelta=eTrue", "Regulator=eTrue", "Reverser=eFalse"}));

    const LocoScriptTemplates t = ReadLocoScriptTemplates(game.ctx);
    EXPECT_EQ(game.bytesOf(game.locoScript), EngineScript(t, {"Exhaust1", "Exhaust2"}));
    EXPECT_EQ(game.bytesOf(game.locoScript + ".bak"), "-- the loco's old script");
    EXPECT_EQ(game.bytesOf(game.simScript), ShippedTemplate("DefaultAudio.lua"));
    EXPECT_EQ(game.bytesOf(game.simScript + ".bak"), "-- the simulation's old script");
    EXPECT_TRUE(fs::exists(game.folder.path() / "app" / "TempFiles" / "EngScript2.lua"));
}

TEST(AddLocoScript, AFolderThatCannotBeWrittenLosesNothing) {
    LocoGame game;
    const std::string before = game.bytesOf(game.loco);
    TransformOutcome out;
    {
        ferrolund::testing::LockedFolder lock(game.onDisk(game.loco).parent_path());
        if (!lock.locked()) GTEST_SKIP() << "the folder cannot be locked against this user";
        game.okToWarning();
        out = AddLocoScript(game.ctx, {game.locoRow()});
    }
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_EQ(out.rows[0].written, "");
    EXPECT_TRUE(out.rows[0].companions.empty());
    EXPECT_EQ(game.bytesOf(game.loco), before);
    EXPECT_EQ(game.bytesOf(game.locoScript), "-- the loco's old script");
    EXPECT_EQ(game.bytesOf(game.simScript), "-- the simulation's old script");
    EXPECT_FALSE(fs::exists(game.onDisk(game.simScript + ".bak")));
}

TEST(AddLocoScript, AmbiguousExhaustsSkipTheRow) {
    LocoGame game;
    Vehicle v;
    v.children = Children({{"Exhaust", ""}, {"Exhaust", ""}});
    v.script = "Kuju\\RailSimulator\\RailVehicles\\Diesel\\Class66\\Engine\\Class66";
    game.put(game.loco, VehicleXml(v));
    const std::string before = game.bytesOf(game.loco);
    game.okToWarning();
    const TransformOutcome out = AddLocoScript(game.ctx, {game.locoRow()});
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_EQ(out.rows[0].reason, "Unable to modify file as Exhaust names ambiguous.");
    EXPECT_EQ(game.bytesOf(game.loco), before);
    EXPECT_EQ(game.bytesOf(game.locoScript), "-- the loco's old script");
}

// The sample's diesel, with one exhaust and no scripts on disk yet.
TEST(AddLocoScript, TheSampleDieselGetsTheOneExhaustScript) {
    Game game;
    game.useTemplates();
    const std::string folder = "Ostvale\\NorthernLines\\RailVehicles\\Diesel\\Class58\\";
    const std::string loco = folder + "Engine\\Class58.bin";
    for (const std::string& file : {loco, folder + "Simulation\\Class58Sim.bin"})
        game.putFile(file, sample::OnDisk(sample::SampleRoot(), "Assets\\" + file));
    game.okToWarning();
    const TransformOutcome out =
        AddLocoScript(game.ctx, {game.row("Ostvale", "NorthernLines", "RailVehicles\\Diesel\\Class58\\Engine\\Class58.bin")});
    ASSERT_EQ(out.rows.size(), 1u);
    ASSERT_EQ(out.rows[0].reason, "") << out.report;
    const LocoScriptTemplates t = ReadLocoScriptTemplates(game.ctx);
    EXPECT_EQ(game.bytesOf(folder + "Engine\\class58.lua"), EngineScript(t, {"Exhaust"}));
    EXPECT_EQ(game.bytesOf(folder + "Simulation\\EngineScript.lua"), ShippedTemplate("DefaultAudio.lua"));
}

TEST(AddWagonScriptText, NamesTheScriptOrAddsTheComponent) {
    const std::string wagonScript = ShippedTemplate("WagScript1.txt");
    Vehicle wagon;
    wagon.engine = false;
    wagon.children = Children({{"Wagon Sound", ""}});
    Vehicle scripted = wagon;
    scripted.script = "Old\\Script";
    Vehicle done = wagon;
    done.script = std::string(kWagonScriptName);
    Vehicle engine;
    struct Case {
        std::string xml;
        Verdict verdict;
    };
    const Case cases[] = {
        {VehicleXml(wagon), Verdict::Changed},
        {VehicleXml(scripted), Verdict::Changed},
        {VehicleXml(done), Verdict::Nothing},
        {VehicleXml(engine), Verdict::Unfit},
    };
    for (const Case& c : cases) {
        const TransformResult r = AddWagonScriptText(c.xml, wagonScript, "444444444");
        ASSERT_EQ(r.verdict, c.verdict);
        if (c.verdict != Verdict::Changed) continue;
        pugi::xml_document doc;
        ASSERT_TRUE(doc.load_string(r.text.c_str()));
        const pugi::xml_node blueprint = doc.select_node("//cWagonBlueprint").node();
        EXPECT_STREQ(blueprint.last_child().name(), "ScriptComponent");
        EXPECT_EQ(std::string(blueprint.last_child().first_child().child_value("Name")), kWagonScriptName);
        EXPECT_EQ(doc.select_nodes("//ScriptComponent").size(), 1u);
        std::string binary;
        EXPECT_FALSE(serz::XmlToBinary(r.text, binary));
    }
    EXPECT_NE(AddWagonScriptText(VehicleXml(wagon), wagonScript, "444444444").text.find("d:id=\"444444444\""),
              std::string::npos);
    EXPECT_EQ(AddWagonScriptText(VehicleXml(wagon), "", "1").verdict, Verdict::Unfit);
}

}  // namespace
}  // namespace ferrolund::assets
