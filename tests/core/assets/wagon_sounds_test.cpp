#include "assets/wagon_sounds.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "assets/blueprint_splice.h"
#include "serz/codec.h"
#include "stock_fixture.h"

namespace ferrolund::assets {
namespace {

namespace fs = std::filesystem;
using testing::Child;
using testing::Game;
using testing::Upright;
using testing::Vehicle;
using testing::VehicleXml;
using Verdict = TransformResult::Verdict;

const std::string kGeneric = "Audio\\RailVehicles\\Wagons\\Wagon Generic Sound.xml";
const std::string kBogies = "Kuju\\RailSimulator\\Audio\\RailNetwork\\Bogies\\";

std::string Template() { return testing::ShippedTemplate("WagonSounds.txt"); }

bool Has(const std::string& text, const std::string& what) { return text.find(what) != std::string::npos; }

bool Compiles(const std::string& xml) {
    std::string binary;
    return !serz::XmlToBinary(xml, binary);
}

Vehicle Wagon(std::vector<Child> children, std::string bogie = kBogies + "BG_Modern") {
    Vehicle v;
    v.engine = false;
    v.name = "Van";
    v.bogieAudio = std::move(bogie);
    v.children = std::move(children);
    return v;
}

// A wagon that gets the template and one whose link is rewritten end with different
// sounds on three of the five entries: both columns are checked for every entry.
TEST(WagonSounds, EachEntryGivesItsBogieItsAddedSoundAndItsRewrittenLink) {
    struct Case {
        WagonSound which;
        std::string bogie, added, linked;
    };
    const Case cases[] = {
        {WagonSound::NewWagon, "BG_Modern", "AP_Old_1_Sound.xml", "AP_New_Sound.xml"},
        {WagonSound::OldHeavy, "BG_Steam", "AP_Old_1_Sound.xml", "AP_Old_1_Sound.xml"},
        {WagonSound::OldHeavyRattly, "BG_Steam", "AP_Old_2_Sound.xml", "AP_Old_1_Sound.xml"},
        {WagonSound::ContainerFlats, "BG_Modern", "AP_Old_1_Sound.xml", "AP_Containers_Sound.xml"},
        {WagonSound::FourWheel, "BG_Steam", "AP_4Wheel_Sound.xml", "AP_4Wheel_Sound.xml"},
    };
    const FreightAudioChoice both{true, true};
    for (const Case& c : cases) {
        const WagonSoundSettings& s = WagonSoundEntry(c.which);
        const TransformResult linked = UpdateWagonSound(
            VehicleXml(Wagon({Child("Wagon Sound", Upright("0", "1", "0"), kGeneric), Child("Dust", Upright("0", "0", "0"))}, "")),
            s, both, Template(), "123456789");
        ASSERT_EQ(linked.verdict, Verdict::Changed) << s.caption;
        EXPECT_TRUE(Has(linked.text, ">" + kBogies + c.bogie + "</BogieAudioControlName>")) << s.caption;
        EXPECT_TRUE(Has(linked.text, ">Audio\\RailVehicles\\Wagons\\AP\\" + c.linked + "</BlueprintID>")) << s.caption;
        EXPECT_TRUE(Has(linked.text, ">Particles\\Dust.xml</BlueprintID>")) << "the next child keeps its link";
        EXPECT_FALSE(Has(linked.text, kGeneric)) << s.caption;

        const TransformResult added = UpdateWagonSound(VehicleXml(Wagon({})), s, both, Template(), "123456789");
        ASSERT_EQ(added.verdict, Verdict::Changed) << s.caption;
        EXPECT_TRUE(Has(added.text, ">Audio\\RailVehicles\\Wagons\\AP\\" + c.added + "</BlueprintID>")) << s.caption;
        EXPECT_TRUE(Has(added.text, "d:id=\"123456789\"")) << s.caption;
        EXPECT_EQ(ChildNames(added.text), std::vector<std::string>{"Wagon Sound"}) << s.caption;
        EXPECT_TRUE(Compiles(added.text)) << s.caption;
        EXPECT_FALSE(Has(added.text, "aaaaaa") || Has(added.text, "bbbbbb")) << s.caption;
    }
}

TEST(WagonSounds, TheTicksDecideWhatIsAdded) {
    struct Case {
        FreightAudioChoice choice;
        std::string bogieBefore, bogieAfter;
        bool soundAdded;
    };
    const Case cases[] = {
        {{false, false}, "", "", false},  // an empty bogie stays empty with the tick off
        {{true, false}, "", kBogies + "BG_Steam", false},
        {{true, false}, "Mine\\Bogie", "Mine\\Bogie", false},  // a bogie of its own is kept
        {{false, true}, "", "", true},
    };
    for (const Case& c : cases) {
        const std::string xml = VehicleXml(Wagon({}, c.bogieBefore));
        const TransformResult r =
            UpdateWagonSound(xml, WagonSoundEntry(WagonSound::FourWheel), c.choice, Template(), "111111111");
        const std::string text = r.verdict == Verdict::Changed ? r.text : xml;
        EXPECT_TRUE(Has(text, ">" + c.bogieAfter + "</BogieAudioControlName>")) << c.bogieBefore;
        EXPECT_EQ(Has(text, "AP_4Wheel_Sound.xml"), c.soundAdded) << c.bogieBefore;
        EXPECT_EQ(r.verdict, text == xml ? Verdict::Nothing : Verdict::Changed);
    }
}

// The link test reads the text as changed, so a wagon that has just been given the
// template's entry has its own old link rewritten as well.
TEST(WagonSounds, AnOldLinkBesideTheAddedEntryIsRewrittenToo) {
    std::string xml = VehicleXml(Wagon({}));
    const std::string link = "\t\t\t<SoundLink>\r\n\t\t\t\t<BlueprintID d:type=\"cDeltaString\">" + kGeneric +
                             "</BlueprintID>\r\n\t\t\t</SoundLink>\r\n";
    xml.insert(xml.find("\t\t</cWagonBlueprint>"), link);
    const TransformResult r =
        UpdateWagonSound(xml, WagonSoundEntry(WagonSound::NewWagon), {false, true}, Template(), "222222222");
    ASSERT_EQ(r.verdict, Verdict::Changed);
    EXPECT_TRUE(Has(r.text, "\\AP\\AP_Old_1_Sound.xml</BlueprintID>"));  // the template's sound
    EXPECT_TRUE(Has(r.text, "\\AP\\AP_New_Sound.xml</BlueprintID>"));    // the rewritten link
    EXPECT_FALSE(Has(r.text, kGeneric));
}

TEST(WagonSounds, RowsItCannotChange) {
    const std::string withChildren = VehicleXml(Wagon({Child("Dust", Upright("0", "0", "0"))}));
    const TransformResult none = UpdateWagonSound(withChildren, WagonSoundEntry(WagonSound::OldHeavy), {true, true},
                                                  Template(), "333333333");
    EXPECT_EQ(none.verdict, Verdict::Nothing);
    EXPECT_EQ(none.reason, "This wagon has no Wagon Sound entry to change.");
    const TransformResult noTemplate =
        UpdateWagonSound(VehicleXml(Wagon({})), WagonSoundEntry(WagonSound::OldHeavy), {false, true}, "", "333333333");
    EXPECT_EQ(noTemplate.verdict, Verdict::Unfit);
    EXPECT_EQ(noTemplate.reason, "Unable to convert files, the file\r\nTemplates\\WagonSounds.txt is missing.");
}

TEST(CoachSounds, EachEntryOnCoachesOfEachBogie) {
    const std::string oldLink = "Audio\\RailVehicles\\Passenger\\Coach Sound.xml";
    struct Case {
        CoachSound which;
        std::string bogieBefore;
        std::string bogieAfter;  // empty: the row is refused
        std::string link;
    };
    const std::string mk3 = kBogies + "RA_BG_Mk3";
    const Case cases[] = {
        {CoachSound::Mk1, kBogies + "BG_Steam", kBogies + "AP\\AP_2Axle_Joints",
         "Audio\\RailVehicles\\Passenger\\AP\\AP_Mk1-2a_Sound.xml"},
        {CoachSound::Mk2AirConditioned, kBogies + "BG_Modern", kBogies + "AP\\AP_2Axle_Joints",
         "Audio\\RailVehicles\\Passenger\\AP\\AP_Mk2f_Sound.xml"},
        {CoachSound::Mk3, kBogies + "BG_Modern", mk3, oldLink},
        {CoachSound::Appropriate, kBogies + "bg_modern", mk3, oldLink},
        {CoachSound::Mk3, kBogies + "BG_Steam", "", oldLink},
        {CoachSound::Appropriate, "", "", oldLink},
    };
    for (const Case& c : cases) {
        const TransformResult r = UpdateCoachSound(
            VehicleXml(Wagon({Child("Dust", Upright("0", "0", "0")), Child("Wagon Sound", Upright("0", "1", "0"), oldLink),
                              Child("Lamp", Upright("0", "0", "0"))},
                             c.bogieBefore)),
            CoachSoundEntry(c.which), "Mk3 TSO");
        const std::string caption(CoachSoundEntry(c.which).caption);
        if (c.bogieAfter.empty()) {
            EXPECT_EQ(r.verdict, Verdict::Unfit) << caption;
            EXPECT_EQ(r.reason, "Mk3 TSO was not using the BG_Modern audio files. No change was made to it.");
            continue;
        }
        ASSERT_EQ(r.verdict, Verdict::Changed) << caption;
        EXPECT_TRUE(Has(r.text, ">" + c.bogieAfter + "</BogieAudioControlName>")) << caption;
        EXPECT_TRUE(Has(r.text, ">" + c.link + "</BlueprintID>")) << caption;
        EXPECT_TRUE(Has(r.text, ">Particles\\Dust.xml</BlueprintID>") && Has(r.text, ">Particles\\Lamp.xml</BlueprintID>"))
            << caption;
    }
}

TEST(ChangeBogieAudio, SetsTheChosenSoundOrSaysWhyNot) {
    for (std::string_view choice : kBogieChoices) {
        const TransformResult r = ChangeBogieAudio(VehicleXml(Wagon({}, "")), choice);
        ASSERT_EQ(r.verdict, Verdict::Changed) << choice;
        EXPECT_TRUE(Has(r.text, ">" + kBogies + std::string(choice) + "</BogieAudioControlName>")) << choice;
    }
    EXPECT_EQ(ChangeBogieAudio(VehicleXml(Wagon({}, kBogies + "BG_Steam")), "BG_Steam").verdict, Verdict::Nothing);
    std::string noBogie = VehicleXml(Wagon({}));
    noBogie.erase(noBogie.find("\t\t\t\t\t<BogieAudioControlName"),
                  noBogie.find("</BogieAudioControlName>\r\n") + 26 - noBogie.find("\t\t\t\t\t<BogieAudioControlName"));
    EXPECT_EQ(ChangeBogieAudio(noBogie, "BG_Steam").verdict, Verdict::Unfit);
}

const std::string kWagonFile = "Prov\\Prod\\RailVehicles\\Güterwagen\\Van.bin";

TEST(WagonSounds, ThroughTheFrameTheDialogAnswersAndNothingIsLostOnAFailedCompile) {
    Game game;
    game.useTemplates();
    game.put(kWagonFile, VehicleXml(Wagon({}, "")));
    const std::string before = game.bytesOf(kWagonFile);
    const AssetRow row = game.row("Prov", "Prod", "RailVehicles\\Güterwagen\\Van.bin", "Van");

    game.okToWarning();
    EXPECT_FALSE(WagonSounds(game.ctx, {row}, WagonSound::NewWagon, [] { return std::nullopt; }).ran);
    EXPECT_EQ(game.bytesOf(kWagonFile), before);

    // A template that does not compile: the wagon stays as it was, with no back-up beside it.
    game.folder.write("app/Templates/WagonSounds.txt", "<Children><cEntityContainerBlueprint-sChild>");
    game.okToWarning();
    TransformOutcome out = WagonSounds(game.ctx, {row}, WagonSound::NewWagon, [] { return FreightAudioChoice{true, true}; });
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_EQ(out.rows[0].written, "");
    EXPECT_EQ(game.bytesOf(kWagonFile), before);
    EXPECT_FALSE(fs::exists(game.onDisk(kWagonFile + ".bak")));

    game.useTemplates();
    game.okToWarning();
    out = WagonSounds(game.ctx, {row}, WagonSound::NewWagon, [] { return FreightAudioChoice{true, true}; });
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_EQ(out.rows[0].reason, "");
    EXPECT_EQ(game.bytesOf(kWagonFile + ".bak"), before);
    const std::string xml = game.xmlOf(kWagonFile);
    EXPECT_TRUE(Has(xml, ">" + kBogies + "BG_Modern</BogieAudioControlName>"));
    EXPECT_TRUE(Has(xml, "\\AP\\AP_Old_1_Sound.xml</BlueprintID>"));
}

}  // namespace
}  // namespace ferrolund::assets
