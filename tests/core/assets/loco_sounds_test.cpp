#include "assets/loco_sounds.h"

#include <gtest/gtest.h>

#include <pugixml.hpp>

#include "assets/blueprint_splice.h"
#include "serz/codec.h"
#include "stock_fixture.h"

namespace ferrolund::assets {
namespace {

using testing::Child;
using testing::Control;
using testing::Game;
using testing::ShippedTemplate;
using testing::Upright;
using testing::Vehicle;
using testing::VehicleXml;
using Verdict = TransformResult::Verdict;

const std::string kModern = "Kuju\\RailSimulator\\Audio\\RailNetwork\\Bogies\\BG_Modern";

ClassSoundTemplates Templates(DieselClass which) {
    const auto names = ClassSoundTemplateNames(which);
    return {ShippedTemplate(std::string(names[0])), ShippedTemplate(std::string(names[1]))};
}

bool Has(const std::string& text, const std::string& what) { return text.find(what) != std::string::npos; }

int Count(const std::string& text, const std::string& what) {
    int n = 0;
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++n;
    return n;
}

// A diesel of the class with its engine sound, horn and exhaust, and its cab controls.
Vehicle Diesel(const std::string& engineSound, const std::string& horn) {
    Vehicle v;
    v.name = "Loco";
    v.children = {Child("EngineSound", Upright("0", "2", "0"), engineSound),
                  Child("HornSound", Upright("0", "3", "5"), horn), Child("Exhaust", Upright("0", "4", "1"))};
    v.controls = {{"Regulator", "eFalse"}, {"Horn", "eFalse"}, {"Reverser", "eFalse"}};
    v.simulation = "RailVehicles\\Diesel\\Sim.xml";
    return v;
}

struct Parsed {
    pugi::xml_document doc;
    explicit Parsed(const std::string& text) { EXPECT_TRUE(doc.load_string(text.c_str())); }
    std::string value(const char* path) const { return doc.select_node(path).node().text().get(); }
    std::vector<std::string> matrix(const std::string& child) const {
        std::vector<std::string> values;
        const auto node = doc.select_node(("//cEntityContainerBlueprint-sChild[ChildName='" + child + "']//Element").c_str());
        for (const auto& e : node.node().children("e")) values.emplace_back(e.text().get());
        return values;
    }
    std::vector<std::string> controls() const {
        std::vector<std::string> names;
        for (const auto& n : doc.select_nodes("//ControlValues/*/ControlName")) names.emplace_back(n.node().text().get());
        return names;
    }
    std::string consist(const std::string& control) const {
        return value(("//cControlContainerBlueprint-cControlValue[ControlName='" + control + "']/ApplyToConsist").c_str());
    }
};

TEST(ClassSounds, Class37GetsItsSecondEngineSoundHornBellBogieAndControls) {
    const std::string xml =
        VehicleXml(Diesel("Audio\\RailVehicles\\Diesel\\Class37\\Class 37 Engine Sound.xml", "Audio\\Class 37 Horn Sound.xml"));
    const TransformResult r = UpdateClassSounds(xml, DieselClass::Class37, Templates(DieselClass::Class37));
    ASSERT_EQ(r.verdict, Verdict::Changed) << r.reason;
    std::string binary;
    ASSERT_FALSE(serz::XmlToBinary(r.text, binary));
    Parsed p(r.text);
    EXPECT_EQ(p.value("//ExpertRemapper"), "TwoTone_Expert");
    EXPECT_EQ(p.value("//IntermediateRemapper"), "Default_Intermediate");
    EXPECT_EQ(p.value("//BogieAudioControlName"), "AP\\C37P\\Audio\\RailNetwork\\Class 37 Bogie");
    EXPECT_EQ(ChildNames(r.text), (std::vector<std::string>{"EngineSound", "EngineSound2", "HornSound", "Exhaust"}));
    const std::vector<std::string> added = p.matrix("EngineSound2");
    ASSERT_EQ(added.size(), 16u);
    EXPECT_EQ(added[13], "2.50444");
    EXPECT_EQ(added[14], "-1.03766");
    EXPECT_TRUE(Has(r.text, ">Audio\\RailVehicles\\Diesel\\Class37\\Class 37 Engine Sound 2.xml</BlueprintID>"));
    const std::vector<std::string> horn = p.matrix("HornSound");
    EXPECT_EQ(std::vector<std::string>(horn.begin(), horn.begin() + 3), (std::vector<std::string>{"4.9533", "9.4107", "1"}));
    EXPECT_EQ(p.matrix("Exhaust"), Upright("0", "4", "1"));
    EXPECT_EQ(p.controls(), (std::vector<std::string>{"Regulator", "Horn", "Bell", "Reverser"}));
    EXPECT_EQ(p.consist("Regulator"), "eTrue");
    EXPECT_EQ(p.consist("Reverser"), "eTrue");
    EXPECT_EQ(p.consist("Horn"), "eFalse");
    for (const char* marker : {"aaaaaa", "bbbbbb", "cccccc", "dddddd", "eeeeee", "pppppp", "qqqqqq"})
        EXPECT_FALSE(Has(r.text, marker)) << marker;

    const TransformResult again = UpdateClassSounds(r.text, DieselClass::Class37, Templates(DieselClass::Class37));
    EXPECT_EQ(again.verdict, Verdict::Nothing);
    EXPECT_EQ(again.reason, "This Loco file appears to have already been modified.");
}

TEST(ClassSounds, Class47GetsThreeChildrenAndThePacksBogieEverywhere) {
    std::string xml = VehicleXml(
        Diesel("Audio\\RailVehicles\\Diesel\\Class 47\\Class 47 Engine Sound.xml", "Audio\\Class 47 Horn Sound.xml"));
    // A Bell control stands already: none is added.
    Vehicle withBell = Diesel("Audio\\RailVehicles\\Diesel\\Class 47\\Class 47 Engine Sound.xml", "Audio\\Class 47 Horn Sound.xml");
    withBell.controls.push_back({"Bell", ""});
    for (const auto& [text, bells] : {std::pair{xml, 1}, std::pair{VehicleXml(withBell), 1}}) {
        std::string source = text;
        source.insert(source.find("\t\t</cEngineBlueprint>"),
                      "\t\t\t<CouplingAudioControlName d:type=\"cDeltaString\">" + kModern + "</CouplingAudioControlName>\r\n");
        const TransformResult r = UpdateClassSounds(source, DieselClass::Class47, Templates(DieselClass::Class47));
        ASSERT_EQ(r.verdict, Verdict::Changed) << r.reason;
        std::string binary;
        ASSERT_FALSE(serz::XmlToBinary(r.text, binary));
        Parsed p(r.text);
        EXPECT_EQ(ChildNames(r.text), (std::vector<std::string>{"EngineSound", "EngineSound2", "EngineSound3",
                                                                "EngineCabSound", "HornSound", "Exhaust"}));
        EXPECT_EQ(p.matrix("EngineCabSound")[13], "2.6865");
        EXPECT_EQ(p.matrix("EngineCabSound")[14], "-8.95135");
        EXPECT_EQ(p.matrix("EngineSound3")[13], "0");
        EXPECT_EQ(p.matrix("HornSound")[0], "9.7");
        EXPECT_EQ(p.matrix("HornSound")[1], "0");
        EXPECT_EQ(Count(r.text, kModern), 0);
        EXPECT_EQ(Count(r.text, "AP\\C47P\\Audio\\RailNetwork\\Class 47 Bogie"), 2);
        EXPECT_EQ(Count(r.text, ">Bell</ControlName>"), bells);
        EXPECT_EQ(p.value("//ExpertRemapper"), "TwoTone_Expert");
        // The three new ids differ.
        std::vector<std::string> ids;
        for (const auto& n : p.doc.select_nodes("//cEntityContainerBlueprint-sChild[starts-with(ChildName,'Engine') and ChildName!='EngineSound']"))
            ids.emplace_back(n.node().attribute("d:id").value());
        ASSERT_EQ(ids.size(), 3u);
        EXPECT_TRUE(ids[0] != ids[1] && ids[1] != ids[2] && ids[0] != ids[2]);
        EXPECT_EQ(ids[0].size(), 9u);
    }
}

TEST(ClassSounds, LocosOfAnotherClassOrWithoutTheTemplatesAreLeftAlone) {
    const std::string c47 = VehicleXml(
        Diesel("Audio\\RailVehicles\\Diesel\\Class 47\\Class 47 Engine Sound.xml", "Audio\\Class 47 Horn Sound.xml"));
    EXPECT_EQ(UpdateClassSounds(c47, DieselClass::Class37, Templates(DieselClass::Class37)).verdict, Verdict::Unfit);
    const TransformResult noTemplate =
        UpdateClassSounds(c47, DieselClass::Class47, {"", ShippedTemplate("BellControl.txt")});
    EXPECT_EQ(noTemplate.verdict, Verdict::Unfit);
    EXPECT_EQ(noTemplate.reason, "Unable to convert files, the file\r\nTemplates\\ChildAudio.txt is missing.");
}

// Run twice through the frame, the second run changes nothing and says why.
TEST(ClassSounds, TheSecondRunOfClass37ChangesNothing) {
    Game game;
    game.useTemplates();
    const std::string file = "AP\\Class37Pack\\RailVehicles\\Diesel\\Class37\\Class 37 Dänemark.bin";
    game.put(file, VehicleXml(Diesel("Audio\\RailVehicles\\Diesel\\Class37\\Class 37 Engine Sound.xml",
                                     "Audio\\Class 37 Horn Sound.xml")));
    const AssetRow row = game.row("AP", "Class37Pack", "RailVehicles\\Diesel\\Class37\\Class 37 Dänemark.bin", "37");
    game.okToWarning();
    TransformOutcome out = ClassSounds(game.ctx, {row}, DieselClass::Class37);
    ASSERT_EQ(out.rows.size(), 1u);
    ASSERT_EQ(out.rows[0].reason, "");
    const std::string once = game.bytesOf(file);
    game.okToWarning();
    out = ClassSounds(game.ctx, {row}, DieselClass::Class37);
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_EQ(out.rows[0].written, "");
    EXPECT_EQ(game.bytesOf(file), once);
    EXPECT_NE(out.report.find("This Loco file appears to have already been modified."), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(game.onDisk(file + ".bak1")));
}

TEST(HstSounds, TheReplacementsOneByOne) {
    struct Case {
        std::string before, after;
    };
    const Case cases[] = {
        {"Class 43 MTU MTU MTU Engine", "Class 43 MTU Engine"},
        {"Audio\\RailVehicles\\Diesel\\RA_Class 43_MTU\\Class 43 Engine Sound MTU.xml</",
         "Audio\\RailVehicles\\Diesel\\AP_Class 43_MTU\\Class 43 Engine Sound MTU.xml</"},
        {kModern + "<", "AP\\C43MTUP\\Audio\\RailNetwork\\Bogies\\Class 43 Bogie<"},
        {"x\\Class 43 Engine Sound.xml<", "x\\Class 43 Engine Sound MTU.xml<"},
        {"x\\Class 43 Cab Sound New.xml<", "x\\Class 43 Cab Sound MTU.xml<"},
        {"x\\class 43 cab sound.xml<", "x\\Class 43 Cab Sound MTU.xml<"},
        {">2.54521<>7.80187<", ">0<>0<"},
        {"Class 43 Horn Sound<e>0</e><e>0</e><e>0</e><e>0</e>", "Class 43 Horn Sound<e>0</e><e>0</e><e>0</e><e>8.8</e>"},
        {"RailVehicles\\Diesel\\HST\\Default\\Simulation\\HST Engine Simulation.xml",
         "RailVehicles\\Diesel\\HST\\FGW\\Simulation\\HST Engine Simulation.xml"},
    };
    for (const Case& c : cases) {
        const std::string text = "GuardSignal " + c.before;
        const TransformResult r = UpdateHstSounds(text, "");
        ASSERT_EQ(r.verdict, Verdict::Changed) << c.before;
        EXPECT_EQ(r.text, "GuardSignal " + c.after);
    }
}

TEST(HstSounds, TheGuardsSignalFollowsTheLastControl) {
    const std::string xml = VehicleXml(Diesel("Audio\\RailVehicles\\Diesel\\HST\\Class 43 Engine Sound.xml", "Audio\\Horn.xml"));
    const TransformResult r = UpdateHstSounds(xml, ShippedTemplate("HST_Controls.txt"));
    ASSERT_EQ(r.verdict, Verdict::Changed);
    std::string binary;
    ASSERT_FALSE(serz::XmlToBinary(r.text, binary));
    EXPECT_EQ(Parsed(r.text).controls(), (std::vector<std::string>{"Regulator", "Horn", "Reverser", "GuardSignal"}));
    EXPECT_EQ(UpdateHstSounds(r.text, ShippedTemplate("HST_Controls.txt")).verdict, Verdict::Nothing);
    const TransformResult missing = UpdateHstSounds(xml, "");
    EXPECT_EQ(missing.verdict, Verdict::Unfit);
    EXPECT_EQ(missing.reason, "Unable to convert files, the file\r\nTemplates\\HST_Controls.txt is missing.");
}

}  // namespace
}  // namespace ferrolund::assets
