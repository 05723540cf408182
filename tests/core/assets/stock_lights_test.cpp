#include "assets/stock_lights.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "assets/blueprint_splice.h"
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

const std::string kLoco = "RailVehicles\\Diesel\\Class58\\Engine\\Class58.bin";
const std::string kLocoFile = "Ostvale\\NorthernLines\\" + kLoco;

// A game with the lamp models, the lighting folder and the shipped lamp templates.
void InstallLights(Game& game) {
    game.put("Kuju\\RailSimulator\\Scenery\\Animated\\oillamp_white_drb.bin", CoachXml("Lamp", {}));
    game.put("Kuju\\RailSimulator\\Scenery\\Animated\\Zugschlusslaterne.bin", CoachXml("Tail lamp", {}));
    fs::create_directories(game.folder.path() / "app" / "Lumenfold" / "Assets");
    for (const char* name : {"UKLights.txt", "UKCode.txt"}) InstallTemplate(game, name);
}

// The 16 matrix values of a child entry.
std::vector<std::string> MatrixOf(const std::string& xml, const std::string& child) {
    const ChildBlock block = FindNamedChild(xml, child);
    std::vector<std::string> values;
    if (!block) return values;
    const std::string text = xml.substr(static_cast<std::size_t>(block.start - 1), static_cast<std::size_t>(block.length));
    for (long at = tools::InStr(text, "<e "); at > 0; at = tools::InStr(at + 1, text, "<e ")) values.push_back(TagValueAt(text, "e", at));
    return values;
}

TEST(LightTable, KeepsTheLinesOfTheKindAsked) {
    const std::string table =
        "// comment, with, commas\r\n"
        "\r\n"
        "Front,P\\Q\\Loco.xml,0,0.7,1.1,9.5,3.0,9.2\r\n"
        "  Rear lamp , P\\Q\\Wagon.xml , 1 , 0.0000 , 1.2 , -6.0\r\n"
        "Short,P\\Q\\Loco.xml\r\n"
        "Long,P\\Q\\Loco.xml,0,1,2,3,4,5,6,7,8,9,10\n"
        "   // indented comment\n"
        "Last,P\\Q\\Loco.xml,0";
    const auto heads = ParseLightTable(table, LampKind::Head);
    ASSERT_EQ(heads.size(), 3u);
    EXPECT_EQ(heads[0].name, "Front");
    EXPECT_EQ(heads[0].blueprint, "P\\Q\\Loco.xml");
    EXPECT_EQ(heads[0].positions, (std::vector<std::string>{"0.7", "1.1", "9.5", "3.0", "9.2"}));
    EXPECT_EQ(heads[1].positions.size(), 8u);  // eleven fields at most
    EXPECT_TRUE(heads[2].positions.empty());
    const auto tails = ParseLightTable(table, LampKind::Tail);
    ASSERT_EQ(tails.size(), 1u);
    EXPECT_EQ(tails[0].name, "Rear lamp");
    EXPECT_EQ(tails[0].positions, (std::vector<std::string>{"0.0000", "1.2", "-6.0"}));

    std::string many;
    for (int i = 0; i < 60; ++i) many += "L" + std::to_string(i) + ",P\\Q\\L.xml,0,1,1,1,1,1\r\n";
    const auto kept = ParseLightTable(many, LampKind::Head);
    ASSERT_EQ(kept.size(), kMostLightTemplates);
    EXPECT_EQ(kept.back().name, "L49");
}

TEST(LightTable, TheShippedTableNamesModelsOfTheSample) {
    const auto heads = ParseLightTable(ShippedTemplate("UKLights.txt"), LampKind::Head);
    const auto tails = ParseLightTable(ShippedTemplate("UKLights.txt"), LampKind::Tail);
    ASSERT_FALSE(heads.empty());
    ASSERT_FALSE(tails.empty());
    for (const auto& entry : heads) {
        for (int place = 1; place <= 4; ++place) EXPECT_TRUE(LampPlace(entry, LampKind::Head, place)) << entry.name;
    }
    for (const auto& entry : tails) EXPECT_TRUE(LampPlace(entry, LampKind::Tail, 1)) << entry.name;
    const std::string code = ShippedTemplate("UKCode.txt");
    for (const char* marker : {"HeadLamp", "111111", "222222", "333333", "444444", "555555", "666666", "777777"})
        EXPECT_GT(tools::InStr(code, marker), 0) << marker;
}

TEST(LampPlace, PlacesFollowFromTheLeftLamp) {
    const LightTemplate entry{"T", "P\\Q\\L.xml", {"0.75", "1.15", "9.72", "3.10", "9.45"}};
    struct Case {
        int place;
        std::string x, y, z;
    };
    const Case cases[] = {{1, "0.75", "1.15", "9.72"}, {2, "0.0000", "1.15", "9.72"}, {3, "-0.75", "1.15", "9.72"},
                          {4, "0.0000", "3.10", "9.45"}};
    for (const Case& c : cases) {
        const auto at = LampPlace(entry, LampKind::Head, c.place);
        ASSERT_TRUE(at) << c.place;
        EXPECT_EQ(at->x + " " + at->y + " " + at->z, c.x + " " + c.y + " " + c.z) << c.place;
    }
    EXPECT_FALSE(LampPlace(entry, LampKind::Head, 5));
    EXPECT_FALSE(LampPlace({"T", "B", {"0.75", "1.15", "9.72"}}, LampKind::Head, 4));  // no top lamp given
    EXPECT_FALSE(LampPlace({"T", "B", {"0.75", "", "9.72"}}, LampKind::Tail, 1));
    EXPECT_EQ(LampPlace(entry, LampKind::Tail, 1)->x, "0.75");
    EXPECT_FALSE(LampPlace(entry, LampKind::Tail, 2));

    const std::pair<std::string, std::string> signs[] = {
        {"0.75", "-0.75"}, {"-0.75", "0.75"}, {"0.0000", "0.0000"}, {"0", "0"}, {"-0.0000", "-0.0000"}};
    for (const auto& [in, out] : signs) EXPECT_EQ(NegatedValue(in), out) << in;
}

TEST(AddLamps, EachTrainTypeLightsItsPlacesAndNamesTheItem) {
    const LightTemplate entry{"T", "P\\Q\\L.xml", {"0.75", "1.15", "9.72", "3.10", "9.45"}};
    const std::string code = ShippedTemplate("UKCode.txt");
    ASSERT_FALSE(code.empty());
    const std::string loco = CoachXml("Class 58 \xC3\xA9t\xC3\xA9", {{"Exhaust", Upright("0", "4", "2")}});
    const std::vector<std::vector<std::string>> lamps = {{"HeadLamp2", "HeadLamp4"}, {"HeadLamp1"}, {"HeadLamp1", "HeadLamp2"},
                                                         {"HeadLamp1", "HeadLamp4"}, {"HeadLamp1", "HeadLamp3"}, {"HeadLamp3"},
                                                         {"HeadLamp2", "HeadLamp3"}, {"HeadLamp2"}, {"HeadLamp4"}};
    for (std::size_t type = 0; type < kTrainTypes.size(); ++type) {
        const TransformResult result = AddLamps(loco, code, entry, LampKind::Head, type, "Class58");
        ASSERT_EQ(result.verdict, Verdict::Changed) << type;
        std::vector<std::string> expected = lamps[type];
        expected.push_back("Exhaust");
        EXPECT_EQ(ChildNames(result.text), expected) << kTrainTypes[type].caption;
        const std::string suffix = kTrainTypes[type].suffix;
        EXPECT_EQ(result.saveAs, "Class58" + suffix + ".bin");
        EXPECT_EQ(TagValueAt(result.text, "Name"), "Class 58 \xC3\xA9t\xC3\xA9" + suffix);
        EXPECT_EQ(TagValueAt(result.text, "Spanish"), "Class 58 \xC3\xA9t\xC3\xA9" + suffix);
        EXPECT_EQ(TagValueAt(result.text, "Dutch"), "");  // five languages only
        EXPECT_TRUE(Compiles(result.text)) << type;
    }
    const TransformResult top = AddLamps(loco, code, entry, LampKind::Head, 8, "Class58");
    EXPECT_EQ(MatrixOf(top.text, "HeadLamp4"),
              (std::vector<std::string>{"1.0000", "0", "0", "0", "0", "1.0000", "0", "0", "0", "0", "1.0000", "0", "0.0000",
                                        "3.10", "9.45", "1.0000"}));
    const TransformResult right = AddLamps(loco, code, entry, LampKind::Head, 5, "Class58");
    EXPECT_EQ(MatrixOf(right.text, "HeadLamp3")[12], "-0.75");
}

TEST(AddLamps, AnEmptyChildListOrAMissingPositionAreHandled) {
    const std::string code = ShippedTemplate("UKCode.txt");
    const LightTemplate tail{"T", "P\\Q\\W.xml", {"0.0000", "1.2", "-6.0"}};
    const TransformResult empty = AddLamps(CoachXml("Wagon", {}), code, tail, LampKind::Tail, 0, "Wagon");
    ASSERT_EQ(empty.verdict, Verdict::Changed);
    EXPECT_EQ(ChildNames(empty.text), std::vector<std::string>{"TailLamp"});
    EXPECT_EQ(tools::InStr(empty.text, "<Children/>"), 0);
    EXPECT_EQ(empty.saveAs, "");  // tail-lights change the item itself
    EXPECT_EQ(TagValueAt(empty.text, "Name"), "Wagon");
    EXPECT_GT(tools::InStr(empty.text, "Zugschlusslaterne.xml"), 0);
    EXPECT_TRUE(Compiles(empty.text));

    const LightTemplate noTop{"T", "P\\Q\\L.xml", {"0.75", "1.15", "9.72"}};
    const TransformResult missing = AddLamps(CoachXml("Loco", {}), code, noTop, LampKind::Head, 0, "Loco");
    EXPECT_EQ(missing.verdict, Verdict::Unfit);
    EXPECT_EQ(missing.reason, "The light template T has no position for the lamps asked for.");
    std::string noList = CoachXml("Loco", {});
    noList.erase(noList.find("<Children/>"), 11);
    EXPECT_EQ(AddLamps(noList, code, noTop, LampKind::Tail, 0, "Loco").verdict, Verdict::Unfit);
}

TEST(AddLights, SavesTheHeadcodeBesideTheOriginal) {
    Game game;
    InstallLights(game);
    game.put(kLocoFile, CoachXml("Ostvale Class 58", {{"Exhaust", Upright("0", "4", "2")}}));
    const std::string before = game.bytesOf(kLocoFile);
    std::vector<std::string> offered;
    const LightAsk ask = [&](const AssetRow& row, const std::vector<LightTemplate>& templates) {
        EXPECT_EQ(row.path, kLoco);
        for (const auto& t : templates) offered.push_back(t.name);
        return std::optional<LightChoice>(LightChoice{0, 0});
    };
    game.okToWarning();
    const TransformOutcome out = AddLights(game.ctx, {game.row("Ostvale", "NorthernLines", kLoco)}, LampKind::Head, ask);
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_EQ(out.rows[0].reason, "");
    // Only the model that is installed is offered.
    EXPECT_EQ(offered, std::vector<std::string>{"Ostvale Class 58 - No.1 end"});
    EXPECT_EQ(game.bytesOf(kLocoFile), before);
    const std::string made = game.xmlOf("Ostvale\\NorthernLines\\RailVehicles\\Diesel\\Class58\\Engine\\Class58_XP-Pass.bin");
    EXPECT_EQ(ChildNames(made), (std::vector<std::string>{"HeadLamp2", "HeadLamp4", "Exhaust"}));
    EXPECT_EQ(TagValueAt(made, "English"), "Ostvale Class 58_XP-Pass");
    EXPECT_EQ(MatrixOf(made, "HeadLamp2")[14], "9.72");  // as the converter prints it
    const long lamp = FindNamedChild(made, "HeadLamp4").start;
    EXPECT_EQ(ReferenceId(made, lamp), "Scenery\\Animated\\oillamp_white_drb.xml");
    // Each lamp has an id of its own.
    const long first = tools::InStr(made, "d:id=\""), second = tools::InStr(first + 1, made, "d:id=\"");
    EXPECT_NE(made.substr(static_cast<std::size_t>(first), 16), made.substr(static_cast<std::size_t>(second), 16));
}

TEST(AddLights, MissingLightFilesAreNamedAndNothingChanges) {
    Game game;
    game.put(kLocoFile, CoachXml("Loco", {}));
    const std::string before = game.bytesOf(kLocoFile);
    int asked = 0;
    const LightAsk ask = [&](const AssetRow&, const std::vector<LightTemplate>&) {
        ++asked;
        return std::optional<LightChoice>(LightChoice{});
    };
    game.okToWarning();
    const TransformOutcome out = AddLights(game.ctx, {game.row("Ostvale", "NorthernLines", kLoco)}, LampKind::Tail, ask);
    EXPECT_FALSE(out.ran);
    EXPECT_EQ(asked, 0);
    EXPECT_EQ(game.ui.texts().back(), "You do not appear to have the Light files installed:-\r\n" + game.gameRoot() +
                                          "\\Assets\\Kuju\\RailSimulator\\Scenery\\Animated\\Zugschlusslaterne.bin\r\n" +
                                          game.ctx.appPath("Lumenfold\\Assets"));
    EXPECT_EQ(game.bytesOf(kLocoFile), before);
}

TEST(AddLights, NoTemplateForAnInstalledModelEndsTheCommand) {
    Game game;
    InstallLights(game);
    game.put(kLocoFile, CoachXml("Loco", {}));
    game.okToWarning();
    EXPECT_FALSE(AddLights(game.ctx, {game.row("Ostvale", "NorthernLines", kLoco)}, LampKind::Tail,
                           [](const AssetRow&, const std::vector<LightTemplate>&) { return std::optional<LightChoice>(); })
                     .ran);
    EXPECT_EQ(game.ui.texts().back(), "There are no tail-light templates in " + game.ctx.appPath("Templates\\UKLights.txt") +
                                          " for a model that is installed.");
}

TEST(AddLights, ATailLampOnAReadOnlyWagonLosesNothing) {
    Game game;
    InstallLights(game);
    const std::string wagon = "Ostvale\\NorthernLines\\RailVehicles\\Freight\\CoalHopper\\CoalHopper.bin";
    const fs::path file = game.put(wagon, CoachXml("Coal hopper", {}));
    const std::string before = game.bytesOf(wagon);
    const auto run = [&] {
        game.okToWarning();
        return AddLights(game.ctx, {game.row("Ostvale", "NorthernLines", "RailVehicles\\Freight\\CoalHopper\\CoalHopper.bin")},
                         LampKind::Tail, [](const AssetRow&, const std::vector<LightTemplate>&) {
                             return std::optional<LightChoice>(LightChoice{0, 0});
                         });
    };
    {
        ferrolund::testing::LockedFolder lock(file.parent_path());
        if (!lock.locked()) GTEST_SKIP() << "the folder cannot be locked against this user";
        const TransformOutcome out = run();
        ASSERT_EQ(out.rows.size(), 1u);
        EXPECT_NE(out.rows[0].reason, "");
        EXPECT_EQ(game.bytesOf(wagon), before);
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(file.parent_path()), fs::directory_iterator()), 1);
    const TransformOutcome out = run();
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_EQ(out.rows[0].reason, "");
    EXPECT_EQ(game.bytesOf(wagon + ".bak"), before);
    EXPECT_EQ(ChildNames(game.xmlOf(wagon)), std::vector<std::string>{"TailLamp"});
}

}  // namespace
}  // namespace ferrolund::assets
