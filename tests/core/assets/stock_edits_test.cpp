#include "assets/stock_edits.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "assets/blueprint_splice.h"
#include "assets/stock_templates.h"
#include "core/tools/testdata_file.h"
#include "serz/codec.h"
#include "stock_fixture.h"
#include "support/locked_folder.h"
#include "tools/files.h"
#include "tools/tags.h"

namespace ferrolund::assets {
namespace {

namespace fs = std::filesystem;
using testing::Child;
using testing::CoachXml;
using testing::Game;
using testing::Siblings;
using testing::TagValue;
using testing::Tilted;
using testing::Upright;

const std::string kCoach = "RailVehicles\\Wägen\\Mk2_TSO.bin";
const std::string kCoachFile = "Prov\\Prod\\" + kCoach;
const std::vector<std::string> kPassengerTemplates = {"AddPassengers.txt", "AddPassengers2.txt", "AddPassengers3.txt"};

// Name and the eight languages of the display name.
std::vector<std::string> Names(const std::string& xml) {
    std::vector<std::string> names{TagValue(xml, "Name")};
    for (const char* lang : {"English", "French", "Italian", "German", "Spanish", "Dutch", "Polish", "Russian"})
        names.push_back(TagValue(xml, lang, "<DisplayName"));
    return names;
}

SaveAsAsk Answer(std::string file, std::string name, std::vector<std::string>* bases = nullptr) {
    return [=](const AssetRow&, const std::string& base) -> std::optional<SaveAsChoice> {
        if (bases) bases->push_back(base);
        return SaveAsChoice{file, name};
    };
}

TEST(PassengerTemplate, ChosenByTheFilesName) {
    const std::pair<std::string, std::string> cases[] = {
        {"BR_Mk1_BCK", "AddPassengers3.txt"}, {"mk1_bfk_maroon", "AddPassengers3.txt"},
        {"GWR_Guard", "AddPassengers3.txt"},  {"MK1_TSO", "AddPassengers.txt"},
        {"Mk2_FO", "AddPassengers2.txt"},     {"Coach", "AddPassengers2.txt"},
    };
    for (const auto& [base, name] : cases) EXPECT_EQ(PassengerTemplate(base), name) << base;
}

// Each shipped template takes its markers, splices into both forms of the list and
// compiles into a blueprint the converter gives back as it was written.
TEST(AddPassengers, EveryTemplateSplicesIntoBothFormsOfTheList) {
    for (const std::string& name : kPassengerTemplates) {
        for (const bool empty : {true, false}) {
            std::string text = empty ? CoachXml("Coach", {}) : CoachXml("Coach", {{"Driver", Upright("0.6", "1.5", "4")}});
            std::string passengers = tools::ReadTextFile(std::string(FERROLUND_SOURCE_DIR) + "/data/Templates/" + name);
            ASSERT_FALSE(passengers.empty()) << name;
            FillNewIds(passengers);
            ASSERT_TRUE(AddPassengerChildren(text, passengers)) << name;
            const std::vector<std::string> children = ChildNames(text);
            EXPECT_EQ(children.size(), empty ? 3u : 4u) << name;
            if (!empty) {
                EXPECT_EQ(children.back(), "Driver") << name;
            }
            std::string binary, back;
            ASSERT_FALSE(serz::XmlToBinary(text, binary)) << name;
            ASSERT_FALSE(serz::BinaryToXml(binary, back)) << name;
            EXPECT_TRUE(SameXmlContent(text, back)) << name;
            EXPECT_EQ(tools::InStr(text, "dddddd"), 0) << name;
        }
    }
    std::string none = "<cBlueprintLoader></cBlueprintLoader>";
    EXPECT_FALSE(AddPassengerChildren(none, "<x/>"));
    EXPECT_EQ(none, "<cBlueprintLoader></cBlueprintLoader>");
}

TEST(AddPassengers, WritesTheNewCoachBesideTheOriginalRecompiledInPlace) {
    struct Case {
        std::string relative;
        fs::path source;  // a real file, or empty for the fixture coach
        std::vector<std::string> before;
    };
    const Case cases[] = {
        {kCoachFile, {}, {"Driver"}},
        {"AP\\VegEP\\Scenery\\BFK_Beech.bin", ferrolund::testing::TestdataPath("serz/scenery-item.bin"), {}},
    };
    for (const Case& c : cases) {
        if (!c.source.empty() && !fs::exists(c.source))
            GTEST_SKIP() << "real game file serz/scenery-item.bin is absent: the shared test data is not beside this checkout";
        Game game;
        game.useTemplates(kPassengerTemplates);
        const fs::path file = c.source.empty() ? game.put(c.relative, CoachXml("Old Coach", {{"Driver", Upright("0.6", "1.5", "4")}}))
                                               : game.putFile(c.relative, c.source);
        const std::string original = game.xmlOf(c.relative);
        const std::size_t a = c.relative.find('\\'), b = c.relative.find('\\', a + 1);
        std::vector<std::string> bases;
        game.okToWarning();
        const TransformOutcome out =
            AddPassengers(game.ctx, {game.row(c.relative.substr(0, a), c.relative.substr(a + 1, b - a - 1), c.relative.substr(b + 1))},
                          Answer(file.stem().string() + "_MT", "Caf\xE9 Coach_MT", &bases));
        ASSERT_EQ(out.rows.size(), 1u) << c.relative;
        EXPECT_EQ(out.rows[0].reason, "") << c.relative;
        EXPECT_EQ(bases, std::vector<std::string>{file.stem().string()});
        const std::string made = c.relative.substr(0, c.relative.size() - 4) + "_MT.bin";
        const std::string xml = game.xmlOf(made);
        std::vector<std::string> children = ChildNames(xml);
        const std::string expectedFirst = c.source.empty() ? "Passengers_Left" : "Passengers_Front";  // Mk2 / BFK
        ASSERT_FALSE(children.empty()) << c.relative;
        EXPECT_EQ(children.front(), expectedFirst) << c.relative;
        EXPECT_EQ(std::vector<std::string>(children.begin() + 3, children.end()), c.before) << c.relative;
        const std::string name = "Caf\xC3\xA9 Coach_MT";
        const std::vector<std::string> names = Names(xml);
        EXPECT_EQ(std::vector<std::string>(names.begin(), names.begin() + 6), std::vector<std::string>(6, name));
        EXPECT_EQ(names[6], "") << "Dutch is not among the five languages";
        // The fresh ids are nine digits and differ.
        std::set<std::string> ids;
        for (long at = tools::InStr(xml, "sChild d:id=\""); at > 0; at = tools::InStr(at + 1, xml, "sChild d:id=\""))
            ids.insert(xml.substr(static_cast<std::size_t>(at + 12), 9));
        EXPECT_GE(ids.size(), 3u);
        // The original is compiled again in its place, its old file kept.
        EXPECT_TRUE(SameXmlContent(original, game.xmlOf(c.relative))) << c.relative;
        EXPECT_TRUE(fs::exists(file.string() + ".bak")) << c.relative;
    }
}

TEST(AddPassengers, CancelMissingTemplateOrLockedFolderLoseNothing) {
    enum class Fault { Cancel, NoTemplate, Locked };
    for (const Fault fault : {Fault::Cancel, Fault::NoTemplate, Fault::Locked}) {
        Game game;
        if (fault != Fault::NoTemplate) game.useTemplates(kPassengerTemplates);
        const fs::path coach = game.put(kCoachFile, CoachXml("Old Coach", {}));
        const std::string before = game.bytesOf(kCoachFile);
        const SaveAsAsk ask = fault == Fault::Cancel ? SaveAsAsk([](const AssetRow&, const std::string&) {
            return std::optional<SaveAsChoice>();
        })
                                                     : Answer("Mk2_TSO_MT", "New");
        TransformOutcome out;
        {
            std::optional<ferrolund::testing::LockedFolder> lock;
            if (fault == Fault::Locked) {
                lock.emplace(coach.parent_path());
                if (!lock->locked()) GTEST_SKIP() << "the folder cannot be locked against this user";
            }
            game.okToWarning();
            out = AddPassengers(game.ctx, {game.row("Prov", "Prod", kCoach)}, ask);
        }
        ASSERT_EQ(out.rows.size(), 1u);
        EXPECT_EQ(out.rows[0].written, "");
        if (fault == Fault::NoTemplate) {
            EXPECT_EQ(out.rows[0].reason, MissingTemplateMessage("AddPassengers2.txt"));
        }
        EXPECT_EQ(game.bytesOf(kCoachFile), before);
        EXPECT_EQ(Siblings(coach), std::vector<fs::path>{"Mk2_TSO.bin"});
    }
}

TEST(MakeDead, TheWholeChildListGoes) {
    std::string text = CoachXml("Loco", {{"Driver", Upright("0.6", "1.5", "4")}, {"Smoke", Tilted()}});
    std::string expected = CoachXml("Loco", {});
    expected.erase(expected.find("\r\n\t\t\t\t\t<Children/>"), 18);
    ASSERT_TRUE(RemoveChildList(text));
    EXPECT_EQ(text, expected);
    std::string empty = CoachXml("Loco", {});
    const std::string before = empty;
    EXPECT_FALSE(RemoveChildList(empty));
    EXPECT_EQ(empty, before);
}

TEST(MakeDead, WritesTheDeadCopyAndLeavesTheOriginal) {
    Game game;
    const fs::path loco = game.put(kCoachFile, CoachXml("Old Loco", {{"Driver", Upright("0.6", "1.5", "4")}}));
    const std::string before = game.bytesOf(kCoachFile);
    game.okToWarning();
    const TransformOutcome out = MakeDead(game.ctx, {game.row("Prov", "Prod", kCoach)}, Answer("Mk2_TSO_Dead", "Old Loco_Dead"));
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_EQ(out.rows[0].reason, "");
    const std::string xml = game.xmlOf("Prov\\Prod\\RailVehicles\\Wägen\\Mk2_TSO_Dead.bin");
    EXPECT_EQ(tools::InStr(xml, "Children"), 0);
    EXPECT_EQ(TagValue(xml, "English"), "Old Loco_Dead");
    EXPECT_EQ(game.bytesOf(kCoachFile), before);
    EXPECT_EQ(Siblings(loco), (std::vector<fs::path>{"Mk2_TSO.bin", "Mk2_TSO_Dead.bin"}));
}

TEST(FlipSign, TurnsTheSignAsText) {
    const std::pair<std::string, std::string> cases[] = {
        {"0.62", "-0.62"}, {"-0.62", "0.62"}, {" -1 ", "1"}, {"0", "-0"}, {"", "-"},
    };
    for (const auto& [value, flipped] : cases) EXPECT_EQ(FlipSign(value), flipped) << value;
}

TEST(AddConductor, CopiesTheDriverToTheOtherSide) {
    std::string text = CoachXml("Loco", {{"Smoke", Tilted()}, {"Driver", Upright("0.62", "1.8", "5.25")}});
    // The driver's seat is named in the child's blueprint.
    text.replace(text.find("Particles\\Driver.xml"), 20, "Cab\\WP_04_02.xml");
    const std::string before = text;
    ASSERT_TRUE(AddConductorChild(text));
    EXPECT_EQ(ChildNames(text), (std::vector<std::string>{"Smoke", "Driver", "Conductor"}));
    const ChildBlock driver = FindNamedChild(text, "Driver");
    const ChildBlock conductor = FindNamedChild(text, "Conductor");
    ASSERT_TRUE(driver && conductor);
    EXPECT_EQ(conductor.start, driver.start + driver.length);
    const std::string block = text.substr(static_cast<std::size_t>(conductor.start - 1), static_cast<std::size_t>(conductor.length));
    EXPECT_NE(block.find("Cab\\WP_04_01.xml"), std::string::npos);
    EXPECT_NE(block.find(">-0.62</e>"), std::string::npos);
    EXPECT_NE(block.find(">1.8</e>"), std::string::npos);
    // Without the copy the text is what it was.
    std::string without = text;
    without.erase(static_cast<std::size_t>(conductor.start - 1), static_cast<std::size_t>(conductor.length));
    EXPECT_EQ(without, before);
}

TEST(AddConductor, WithoutADriverTheBlueprintIsCompiledUnchanged) {
    Game game;
    game.put(kCoachFile, CoachXml("Loco", {{"Smoke", Tilted()}}));
    const std::string before = game.xmlOf(kCoachFile);
    std::string text = before;
    EXPECT_FALSE(AddConductorChild(text));
    EXPECT_EQ(text, before);
    game.okToWarning();
    const TransformOutcome out = AddConductor(game.ctx, {game.row("Prov", "Prod", kCoach)});
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_EQ(out.rows[0].reason, "");
    EXPECT_FALSE(out.rows[0].backup.empty());
    EXPECT_TRUE(SameXmlContent(before, game.xmlOf(kCoachFile)));
}

TEST(SetMassCapacity, MassCargoDefinitionAndCapacity) {
    const std::string cargoDef = tools::ReadTextFile(std::string(FERROLUND_SOURCE_DIR) + "/data/Templates/CargoDef.txt");
    ASSERT_NE(cargoDef.find("<Capacity "), std::string::npos);
    const std::string mass = "<Mass d:type=\"sFloat32\" d:precision=\"string\">32.5</Mass>";
    const std::string capacity = "<Capacity d:type=\"sFloat32\" d:precision=\"string\">10</Capacity>";
    struct Case {
        std::string name, body;
        bool written;
        std::string mass, capacity;  // values after
    };
    const Case cases[] = {
        {"both", mass + "<CargoDef><cCargoDef>" + capacity + "</cCargoDef></CargoDef>", true, "41", "58.5"},
        {"empty cargo definition", mass + "<CargoDef/>", true, "41", "58.5"},
        {"mass alone", mass, true, "41", ""},
        {"neither", "<Other/>", false, "", ""},
    };
    for (const Case& c : cases) {
        std::string text = "<cWagonBlueprint>" + c.body + "</cWagonBlueprint>";
        EXPECT_EQ(SetMassCapacity(text, {"41", "58.5"}, cargoDef), c.written) << c.name;
        EXPECT_EQ(TagValue(text, "Mass"), c.mass) << c.name;
        EXPECT_EQ(TagValue(text, "Capacity"), c.capacity) << c.name;
        EXPECT_EQ(tools::InStr(text, "<CargoDef/>"), 0) << c.name;
    }
}

TEST(SetMassCapacity, TheCarsAreWrittenWithTheSharedCargoDefinition) {
    Game game;
    game.useTemplates({"CargoDef.txt"});
    std::string xml = CoachXml("Wagon", {});
    xml.replace(xml.find("\t\t\t<RenderComponent>"), 0, "\t\t\t<CargoComponent>\r\n\t\t\t\t<CargoDef/>\r\n\t\t\t</CargoComponent>\r\n");
    game.put(kCoachFile, xml);
    game.okToWarning();
    const TransformOutcome out = CorrectMassCapacity(game.ctx, {game.row("Prov", "Prod", kCoach)}, {"21.25", "30"});
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_EQ(out.rows[0].reason, "");
    const std::string after = game.xmlOf(kCoachFile);
    EXPECT_EQ(TagValue(after, "Mass"), "21.25");
    EXPECT_EQ(TagValue(after, "Capacity"), "30");
    EXPECT_NE(after.find("<cCargoDef"), std::string::npos);
}

}  // namespace
}  // namespace ferrolund::assets
