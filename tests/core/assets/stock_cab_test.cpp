#include "assets/stock_cab.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "assets/blueprint_splice.h"
#include "core/sample/sample_fixture.h"
#include "fitting_fixture.h"
#include "support/locked_folder.h"
#include "tools/text_search.h"

namespace ferrolund::assets {
namespace {

namespace fs = std::filesystem;
using testing::CoachXml;
using testing::Compiles;
using testing::InstallTemplate;
using testing::ReferenceId;
using testing::ShippedTemplate;
using testing::TagValueAt;
using testing::Game;
using testing::Upright;
using Verdict = TransformResult::Verdict;

std::size_t FilesIn(const fs::path& folder) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

// --- Occlusions ---

TEST(AppendToChildren, GoesBehindTheLastEntry) {
    const std::string insert = "\t\t\t\t\t\t<cEntityContainerBlueprint-sChild>\r\n\t\t\t\t\t\t\t<ChildName d:type=\"cDeltaString\">"
                               "New</ChildName>\r\n\t\t\t\t\t\t</cEntityContainerBlueprint-sChild>\r\n";
    struct Case {
        std::vector<testing::Child> children;
        std::vector<std::string> names;
    };
    const Case cases[] = {
        {{{"A", Upright("0", "0", "0")}, {"B", Upright("0", "0", "0")}}, {"A", "B", "New"}},
        {{}, {"New"}},  // "<Children/>"
    };
    for (const Case& c : cases) {
        std::string xml = CoachXml("Loco", c.children);
        ASSERT_TRUE(AppendToChildren(xml, insert));
        EXPECT_EQ(ChildNames(xml), c.names);
        EXPECT_TRUE(Compiles(xml));
        EXPECT_EQ(tools::InStr(xml, "</cEntityContainerBlueprint-sChild>\t"), 0) << "each entry on its own line";
    }
    std::string empty = CoachXml("Loco", {});
    empty.replace(empty.find("<Children/>"), 11, "<Children>\r\n\t\t\t\t\t</Children>");
    ASSERT_TRUE(AppendToChildren(empty, insert));
    EXPECT_EQ(ChildNames(empty), std::vector<std::string>{"New"});
    EXPECT_TRUE(Compiles(empty));
    std::string none = CoachXml("Loco", {});
    none.erase(none.find("<Children/>"), 11);
    const std::string was = none;
    EXPECT_FALSE(AppendToChildren(none, insert));
    EXPECT_EQ(none, was);
}

class CabOcclusions : public ::testing::TestWithParam<std::string> {
protected:
    std::string digits() const { return GetParam(); }
    std::string loco() const { return "RailVehicles\\Diesel\\Class" + digits() + "\\Engine\\Class" + digits() + ".bin"; }
    std::string locoFile() const { return "Br\xC3\xBC" "ckner\\Diesels\\" + loco(); }
    // The occlusion files a user puts in the program's folder.
    void installOcclusions(Game& game, bool folder, bool shadow) const {
        if (folder) {
            game.folder.write("app/Occlusions/Waggonz/" + digits() + "Occ/Occlusion/" + digits() + "CabOcclusion.bin", "occ");
        }
        if (shadow) game.folder.write("app/Occlusions/" + digits() + "CabShadow.bin", "shadow");
        InstallTemplate(game, "Class" + digits() + "Children.txt");
    }
};

TEST_P(CabOcclusions, AreAddedOnceWithTheFilesTheyNeed) {
    Game game;
    installOcclusions(game, true, true);
    const fs::path file = game.put(locoFile(), CoachXml("Loco", {{"Exhaust", Upright("0", "4", "2")}}));
    const AssetRow row = game.row("Br\xC3\xBC" "ckner", "Diesels", loco());
    game.okToWarning();
    const TransformOutcome out = AddCabOcclusions(game.ctx, {row}, digits());
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_EQ(out.rows[0].reason, "");
    EXPECT_EQ(tools::ReadTextFile((game.onDisk("Waggonz\\" + digits() + "Occ\\Occlusion\\" + digits() + "CabOcclusion.bin")).string()),
              "occ");
    EXPECT_EQ(tools::ReadTextFile((file.parent_path() / (digits() + "CabShadow.bin")).string()), "shadow");
    const std::string xml = game.xmlOf(locoFile());
    EXPECT_EQ(ChildNames(xml), (std::vector<std::string>{"Exhaust", digits() + "CabShadow", digits() + "CabOcclusion"}));
    const long shadow = FindNamedChild(xml, digits() + "CabShadow").start;
    EXPECT_EQ(TagValueAt(xml, "Provider", shadow), "Br\xC3\xBC" "ckner");
    EXPECT_EQ(TagValueAt(xml, "Product", shadow), "Diesels");
    EXPECT_EQ(ReferenceId(xml, shadow),
              "RailVehicles\\Diesel\\Class" + digits() + "\\Engine\\" + digits() + "CabShadow.xml");
    const long occlusion = FindNamedChild(xml, digits() + "CabOcclusion").start;
    EXPECT_EQ(TagValueAt(xml, "Product", occlusion), digits() + "Occ");
    // Two new nine-digit ids, different from each other.
    const std::string a = xml.substr(static_cast<std::size_t>(shadow - 1), 60);
    const std::string b = xml.substr(static_cast<std::size_t>(occlusion - 1), 60);
    EXPECT_NE(a, b);
    EXPECT_EQ(a.find("dddddd"), std::string::npos);

    // A second run finds the shadow named and skips the row.
    const std::string once = game.bytesOf(locoFile());
    game.okToWarning();
    const TransformOutcome again = AddCabOcclusions(game.ctx, {row}, digits());
    ASSERT_EQ(again.rows.size(), 1u);
    EXPECT_EQ(again.rows[0].reason, "This item already has " + digits() + "CabShadow.xml.");
    EXPECT_EQ(game.bytesOf(locoFile()), once);
}

TEST_P(CabOcclusions, MissingFilesAreNamedAndNothingChanges) {
    struct Case {
        bool folder, shadow;
        std::vector<std::string> missing;
    };
    const Case cases[] = {
        {false, false, {"Occlusions\\Waggonz\\" + digits() + "Occ", "Occlusions\\" + digits() + "CabShadow.bin"}},
        {true, false, {"Occlusions\\" + digits() + "CabShadow.bin"}},
        {false, true, {"Occlusions\\Waggonz\\" + digits() + "Occ"}},
    };
    for (const Case& c : cases) {
        Game game;
        installOcclusions(game, c.folder, c.shadow);
        const fs::path file = game.put(locoFile(), CoachXml("Loco", {}));
        const std::string before = game.bytesOf(locoFile());
        game.okToWarning();
        EXPECT_FALSE(AddCabOcclusions(game.ctx, {game.row("Br\xC3\xBC" "ckner", "Diesels", loco())}, digits()).ran);
        std::string expected = "The cab occlusion files for the Class " + digits() + " are not installed. Missing:-";
        for (const auto& m : c.missing) expected += "\r\n" + game.ctx.appPath(m);
        expected += "\r\nPut the folder Waggonz\\" + digits() + "Occ and the file " + digits() + "CabShadow.bin in " +
                    game.ctx.appPath("Occlusions") + " and try again. Nothing has been changed.";
        EXPECT_EQ(game.ui.texts().back(), expected);
        EXPECT_EQ(game.bytesOf(locoFile()), before);
        EXPECT_EQ(FilesIn(file.parent_path()), 1u);
        EXPECT_FALSE(fs::exists(game.onDisk("Waggonz")));
    }
}

TEST_P(CabOcclusions, AReadOnlyLocoFolderLosesNothing) {
    Game game;
    installOcclusions(game, true, true);
    const fs::path file = game.put(locoFile(), CoachXml("Loco", {{"Exhaust", Upright("0", "4", "2")}}));
    const std::string before = game.bytesOf(locoFile());
    ferrolund::testing::LockedFolder lock(file.parent_path());
    if (!lock.locked()) GTEST_SKIP() << "the folder cannot be locked against this user";
    game.okToWarning();
    const TransformOutcome out = AddCabOcclusions(game.ctx, {game.row("Br\xC3\xBC" "ckner", "Diesels", loco())}, digits());
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_NE(out.rows[0].reason, "");
    EXPECT_EQ(game.bytesOf(locoFile()), before);
    EXPECT_EQ(FilesIn(file.parent_path()), 1u);
}

INSTANTIATE_TEST_SUITE_P(Classes, CabOcclusions, ::testing::Values("37", "47"));

// --- Wheelslip ---

// A bogie blueprint; `powered` empty leaves the Powered line out.
std::string BogieXml(const std::string& powered, bool axle = true) {
    std::string xml = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
                      "<cBlueprintLoader xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\">\r\n"
                      "\t<Blueprint>\r\n\t\t<cBogieBlueprint>\r\n"
                      "\t\t\t<Name d:type=\"cDeltaString\">Front bogie</Name>\r\n"
                      "\t\t\t<Animation>\r\n\t\t\t\t<cBogieAnimation>\r\n";
    if (!powered.empty()) xml += "\t\t\t\t\t<Powered d:type=\"cDeltaString\">" + powered + "</Powered>\r\n";
    if (axle) {
        xml += "\t\t\t\t\t<Axle>\r\n\t\t\t\t\t\t<cAxle>\r\n\t\t\t\t\t\t\t<Radius d:type=\"sFloat32\" d:precision=\"string\">"
               "0.5</Radius>\r\n\t\t\t\t\t\t</cAxle>\r\n\t\t\t\t\t</Axle>\r\n";
    }
    return xml + "\t\t\t\t</cBogieAnimation>\r\n\t\t\t</Animation>\r\n\t\t</cBogieBlueprint>\r\n\t</Blueprint>\r\n</cBlueprintLoader>\r\n";
}

TEST(MakeBogieUnpowered, SwitchesTheDriveOff) {
    struct Case {
        std::string xml;
        Verdict verdict;
        std::string expected;  // the changed text, for Changed
    };
    const std::string line = "\t\t\t\t\t<Powered d:type=\"cDeltaString\">eFalse</Powered>\r\n";
    const Case cases[] = {
        {BogieXml("eTrue"), Verdict::Changed, BogieXml("eFalse")},
        {BogieXml("EFALSE"), Verdict::Nothing, ""},
        {BogieXml(""), Verdict::Changed, BogieXml("eFalse")},
        {BogieXml("", false), Verdict::Unfit, ""},
    };
    for (const Case& c : cases) {
        const TransformResult result = MakeBogieUnpowered(c.xml);
        EXPECT_EQ(result.verdict, c.verdict);
        if (c.verdict != Verdict::Changed) continue;
        EXPECT_EQ(result.text, c.expected);
        EXPECT_TRUE(Compiles(result.text));
    }
}

TEST(AddWheelSlip, WorksOnBogiesUntilARowIsNone) {
    Game game;
    const std::string front = "RailVehicles\\Steam\\Merlin\\Bogies\\FrontBogie.bin";
    const std::string rear = "RailVehicles\\Steam\\Merlin\\Bogies\\TrailingBogie.bin";
    const std::string loco = "RailVehicles\\Steam\\Merlin\\Engine\\Merlin.bin";
    const std::string last = "RailVehicles\\Steam\\Merlin\\Bogies\\FrontBogie2.bin";
    for (const auto& path : {front, rear, last}) game.put("H\\S\\" + path, BogieXml("eTrue"));
    game.put("H\\S\\" + loco, CoachXml("Merlin", {}));
    const std::string rearBefore = game.bytesOf("H\\S\\" + rear), lastBefore = game.bytesOf("H\\S\\" + last);
    game.okToWarning();
    game.ui.answers.push_back(base::Answer::No);  // the trailing bogie is not a front one
    const TransformOutcome out = AddWheelSlip(
        game.ctx, {game.row("H", "S", front), game.row("H", "S", rear), game.row("H", "S", loco), game.row("H", "S", last)});
    ASSERT_EQ(out.rows.size(), 2u);
    EXPECT_EQ(out.rows[0].reason, "");
    EXPECT_EQ(out.rows[1].reason, "Cancelled.");
    EXPECT_EQ(TagValueAt(game.xmlOf("H\\S\\" + front), "Powered"), "eFalse");
    EXPECT_EQ(game.bytesOf("H\\S\\" + rear), rearBefore);
    EXPECT_EQ(game.bytesOf("H\\S\\" + last), lastBefore);
    EXPECT_NE(out.report.find("H\\S\\" + loco + "  This item is not a bogie: the walk ends here.\r\n"), std::string::npos);
    const auto texts = game.ui.texts();
    ASSERT_GE(texts.size(), 3u);
    EXPECT_EQ(texts[0], game.ctx.langText(461) + "\r\n" + game.ctx.langText(462));
    EXPECT_EQ(texts[2], game.ctx.langText(464) + "Continue");
    EXPECT_EQ(game.ui.shown[2].title, game.gameRoot() + "\\Assets\\H\\S\\" + rear);
}

TEST(AddWheelSlip, NoBogieSelectedSaysSoAndAsksNothingElse) {
    Game game;
    game.put("H\\S\\Engine\\Merlin.bin", CoachXml("Merlin", {}));
    const std::string before = game.bytesOf("H\\S\\Engine\\Merlin.bin");
    const TransformOutcome out = AddWheelSlip(game.ctx, {game.row("H", "S", "Engine\\Merlin.bin")});
    EXPECT_TRUE(out.rows.empty());
    EXPECT_EQ(game.ui.texts().back(), "H\\S\\Engine\\Merlin.bin  This item is not a bogie: the walk ends here.");
    EXPECT_EQ(game.ui.texts().size(), 2u);
    EXPECT_EQ(game.bytesOf("H\\S\\Engine\\Merlin.bin"), before);
}

TEST(AddWheelSlip, TheSamplesFrontBogieLosesItsDrive) {
    const fs::path root = sample::SampleRoot();
    Game game;
    const std::string bogie = "RailVehicles\\Steam\\Merlin\\Bogies\\FrontBogie.bin";
    game.putFile("Hartwell\\SteamHeritage\\" + bogie, sample::OnDisk(root, "Assets\\Hartwell\\SteamHeritage\\" + bogie));
    EXPECT_EQ(TagValueAt(game.xmlOf("Hartwell\\SteamHeritage\\" + bogie), "Powered"), "eTrue");
    game.okToWarning();
    const TransformOutcome out = AddWheelSlip(game.ctx, {game.row("Hartwell", "SteamHeritage", bogie)});
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_EQ(out.rows[0].reason, "");
    EXPECT_EQ(TagValueAt(game.xmlOf("Hartwell\\SteamHeritage\\" + bogie), "Powered"), "eFalse");
}

// --- US air brakes ---

// A cab interior with a train brake control, its lever of the kind given, and a
// throttle after it.
std::string InteriorXml(const std::string& brakeLever, const std::string& throttleLever = "cInteriorLinearLever") {
    auto control = [](const std::string& name, const std::string& lever, const std::string& animation) {
        return "\t\t\t\t\t<cControlContainerBlueprint-cControl>\r\n"
               "\t\t\t\t\t\t<ControlName d:type=\"cDeltaString\">" + name + "</ControlName>\r\n"
               "\t\t\t\t\t\t<InterfaceElements>\r\n"
               "\t\t\t\t\t\t\t<cControlContainerBlueprint-" + lever + ">\r\n"
               "\t\t\t\t\t\t\t\t<AnimationName d:type=\"cDeltaString\">" + animation + "</AnimationName>\r\n"
               "\t\t\t\t\t\t\t</cControlContainerBlueprint-" + lever + ">\r\n"
               "\t\t\t\t\t\t</InterfaceElements>\r\n"
               "\t\t\t\t\t</cControlContainerBlueprint-cControl>\r\n";
    };
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
           "<cBlueprintLoader xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\">\r\n"
           "\t<Blueprint>\r\n\t\t<cEngineInteriorBlueprint>\r\n"
           "\t\t\t<Name d:type=\"cDeltaString\">GP interior</Name>\r\n"
           "\t\t\t<ControlContainerComponent>\r\n\t\t\t\t<Controls>\r\n" +
           control("TrainBrakeControl", brakeLever, "AutoBrake") + control("Regulator", throttleLever, "Throttle") +
           "\t\t\t\t</Controls>\r\n\t\t\t</ControlContainerComponent>\r\n"
           "\t\t</cEngineInteriorBlueprint>\r\n\t</Blueprint>\r\n</cBlueprintLoader>\r\n";
}

TEST(SetUsAirBrakes, ReplacesTheTrainBrakeHandle) {
    const std::string air = ShippedTemplate("US_AirBrakes.txt");
    ASSERT_GT(tools::InStr(air, "aaaaaa"), 0);
    const TransformResult changed = SetUsAirBrakes(InteriorXml("cInteriorIrregularNotchedLever"), air);
    ASSERT_EQ(changed.verdict, Verdict::Changed);
    EXPECT_TRUE(Compiles(changed.text));
    const long brake = tools::InStr(changed.text, ">TrainBrakeControl<");
    EXPECT_EQ(TagValueAt(changed.text, "AnimationName", brake), "AutoBrake");
    EXPECT_EQ(TagValueAt(changed.text, "Name", brake), "Release");
    EXPECT_EQ(TagValueAt(changed.text, "AnimationName", tools::InStr(changed.text, ">Regulator<")), "Throttle");
    EXPECT_EQ(SetUsAirBrakes(changed.text, air).verdict, Verdict::Nothing);

    struct Case {
        std::string xml;
        std::string reason;
    };
    std::string noControl = InteriorXml("cInteriorIrregularNotchedLever");
    noControl.replace(noControl.find(">TrainBrakeControl<"), 19, ">Horn<");
    std::string noAnimation = InteriorXml("cInteriorIrregularNotchedLever");
    noAnimation.replace(noAnimation.find("AutoBrake"), 9, "");
    const Case unfit[] = {
        {InteriorXml("cInteriorLinearLever"), std::string(kNoNotchedLever)},
        // the throttle's notched lever is not the brake's
        {InteriorXml("cInteriorLinearLever", "cInteriorIrregularNotchedLever"), std::string(kNoNotchedLever)},
        {noControl, std::string(kNoNotchedLever)},
        {noAnimation, "The train brake lever has no AnimationName."},
    };
    for (const Case& c : unfit) {
        const TransformResult result = SetUsAirBrakes(c.xml, air);
        EXPECT_EQ(result.verdict, Verdict::Unfit);
        EXPECT_EQ(result.reason, c.reason);
    }
}

TEST(ChangeUsAirbrakes, ChangesTheInteriorTheLocoNames) {
    Game game;
    InstallTemplate(game, "US_AirBrakes.txt");
    const std::string interior = "RailVehicles\\Diesel\\GP38\\CabView\\GP38Interior.bin";
    std::string locoXml = CoachXml("GP38", {{"Cab", Upright("0", "0", "0")}});
    locoXml.replace(locoXml.find("Particles\\Cab.xml"), 17, "RailVehicles\\Diesel\\GP38\\CabView\\GP38Interior.xml");
    locoXml.replace(locoXml.find("Kuju"), 4, "US");
    locoXml.replace(locoXml.find("RailSimulator"), 13, "Road");
    game.put("US\\Road\\RailVehicles\\Diesel\\GP38\\Engine\\GP38.bin", locoXml);
    game.put("US\\Road\\" + interior, InteriorXml("cInteriorIrregularNotchedLever"));
    game.put("US\\Road\\Engine\\NoCab.bin", CoachXml("No cab", {}));
    game.put("US\\Road\\Engine\\Linear.bin", InteriorXml("cInteriorLinearLever"));
    const std::string loco = game.bytesOf("US\\Road\\RailVehicles\\Diesel\\GP38\\Engine\\GP38.bin");
    const std::string linear = game.bytesOf("US\\Road\\Engine\\Linear.bin");
    game.okToWarning();
    const TransformOutcome out = ChangeUsAirbrakes(
        game.ctx, {game.row("US", "Road", "RailVehicles\\Diesel\\GP38\\Engine\\GP38.bin"),
                   game.row("US", "Road", "Engine\\NoCab.bin"), game.row("US", "Road", "Engine\\Linear.bin")});
    ASSERT_EQ(out.rows.size(), 3u);
    EXPECT_EQ(out.rows[0].reason, "");
    EXPECT_EQ(out.rows[0].written, game.gameRoot() + "\\Assets\\US\\Road\\" + interior);
    EXPECT_EQ(out.rows[1].reason, "This loco does not name a cab interior blueprint.");
    EXPECT_EQ(out.rows[2].reason, std::string(kNoNotchedLever));
    EXPECT_EQ(game.bytesOf("US\\Road\\RailVehicles\\Diesel\\GP38\\Engine\\GP38.bin"), loco);
    EXPECT_EQ(game.bytesOf("US\\Road\\Engine\\Linear.bin"), linear);
    EXPECT_TRUE(fs::exists(game.onDisk("US\\Road\\" + interior + ".bak")));
    EXPECT_EQ(TagValueAt(game.xmlOf("US\\Road\\" + interior), "Name", tools::InStr(game.xmlOf("US\\Road\\" + interior), "<Notches")),
              "Release");
    const auto texts = game.ui.texts();
    EXPECT_EQ(texts.front(), "This option will modify airbrakes on US Diesels");
    EXPECT_NE(std::find(texts.begin(), texts.end(), std::string(kNoNotchedLever)), texts.end());
}

}  // namespace
}  // namespace ferrolund::assets
