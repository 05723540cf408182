#include <gtest/gtest.h>

#include <filesystem>

#include "assets/blueprint_splice.h"
#include "assets/stock_transforms.h"
#include "core/sample/sample_fixture.h"
#include "core/tools/testdata_file.h"
#include "stock_fixture.h"
#include "tools/tags.h"

namespace ferrolund::assets {
namespace {

namespace fs = std::filesystem;
using testing::CoachXml;
using testing::Game;
using testing::GeometryXml;
using testing::Tilted;
using testing::Upright;

const std::string kClass58 = "RailVehicles\\Diesel\\Class58\\Engine\\Class58.bin";

// The lines of two texts that differ, line ends normalised.
std::vector<std::pair<std::string, std::string>> ChangedLines(const std::string& a, const std::string& b) {
    auto lines = [](const std::string& text) {
        std::vector<std::string> out;
        std::string line;
        for (char c : text) {
            if (c == '\r') continue;
            if (c == '\n') {
                out.push_back(line);
                line.clear();
            } else {
                line += c;
            }
        }
        if (!line.empty()) out.push_back(line);
        return out;
    };
    const auto x = lines(a), y = lines(b);
    std::vector<std::pair<std::string, std::string>> changed;
    for (std::size_t i = 0; i < std::max(x.size(), y.size()); ++i) {
        const std::string l = i < x.size() ? x[i] : "", r = i < y.size() ? y[i] : "";
        if (l != r) changed.emplace_back(l, r);
    }
    return changed;
}

std::string Value(const std::string& xml, const std::string& tag) {
    std::string value;
    long pos = 1;
    tools::GetDetail(xml, pos, tag, value);
    return value;
}

TEST(ChangeName, ARealBlueprintChangesInItsNamesAlone) {
    FERROLUND_READ_TESTDATA(binary, "serz/scenery-item.bin");
    Game game;
    game.putFile("AP\\VegEP\\Scenery\\Trees\\Beech1.bin", ferrolund::testing::TestdataPath("serz/scenery-item.bin"));
    const std::string before = game.xmlOf("AP\\VegEP\\Scenery\\Trees\\Beech1.bin");
    game.okToWarning();
    game.ui.inputs.push_back("Gr\xFCne # & Co");  // typed on the screen: Windows-1252
    const TransformOutcome out =
        ChangeName(game.ctx, {game.row("AP", "VegEP", "Scenery\\Trees\\Beech1.bin", "AP Tree Near Beech 1")});
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_EQ(out.rows[0].reason, "");
    EXPECT_EQ(out.rows[0].row.name, "Gr\xFCne AP Tree Near Beech 1 & Co");
    EXPECT_EQ(game.bytesOf("AP\\VegEP\\Scenery\\Trees\\Beech1.bin.bak"), binary);
    const std::string after = game.xmlOf("AP\\VegEP\\Scenery\\Trees\\Beech1.bin");
    const std::string name = "Gr\xC3\xBCne AP Tree Near Beech 1 &amp; Co";
    const auto changed = ChangedLines(before, after);
    // Name and the eight languages of the display name; the description stays.
    ASSERT_EQ(changed.size(), 9u);
    for (const auto& [was, now] : changed) EXPECT_NE(now.find(">" + name + "</"), std::string::npos) << now;
    EXPECT_EQ(Value(after, "Name"), name);
}

TEST(ChangeName, CancelledOrEmptyChangesNothing) {
    for (const std::optional<std::string>& typed : {std::optional<std::string>(), std::optional<std::string>("  ")}) {
        Game game;
        game.put("P\\Q\\C.bin", CoachXml("Old", {}));
        const std::string before = game.bytesOf("P\\Q\\C.bin");
        game.okToWarning();
        game.ui.inputs.push_back(typed);
        EXPECT_FALSE(ChangeName(game.ctx, {game.row("P", "Q", "C.bin")}).ran);
        EXPECT_EQ(game.bytesOf("P\\Q\\C.bin"), before);
    }
}

TEST(ChangeName, EachRowKeepsItsOwnOldName) {
    Game game;
    game.put("P\\Q\\A.bin", CoachXml("Alpha", {}));
    game.put("P\\Q\\B.bin", CoachXml("Beta", {}));
    game.okToWarning();
    game.ui.inputs.push_back("# (red)");
    const auto out = ChangeName(game.ctx, {game.row("P", "Q", "A.bin", "Alpha"), game.row("P", "Q", "B.bin", "Beta")});
    ASSERT_EQ(out.rows.size(), 2u);
    EXPECT_EQ(Value(game.xmlOf("P\\Q\\A.bin"), "English"), "Alpha (red)");
    EXPECT_EQ(Value(game.xmlOf("P\\Q\\B.bin"), "Russian"), "Beta (red)");
}

TEST(ChangeLods, RescalesTheGeometryOfTheRow) {
    struct Case {
        double min, max;
        std::vector<std::string> values;
    };
    const Case cases[] = {
        {0, 2000, {"0", "1000", "2000", "500"}},
        {5000, 20000, {"4000", "7000", "10000", "5500"}},  // the limits
    };
    for (const Case& c : cases) {
        Game game;
        game.put("P\\Q\\C.bin", CoachXml("C", {}, "P\\Q\\Body\\[00]coach"));
        game.put("P\\Q\\Body\\coach.GeoPcDx", GeometryXml({{"100", "550", "1000"}, {"325"}}));
        game.okToWarning();
        const TransformOutcome out = ChangeLods(game.ctx, {game.row("P", "Q", "C.bin")}, c.min, c.max);
        ASSERT_EQ(out.rows.size(), 1u);
        EXPECT_EQ(out.rows[0].reason, "");
        EXPECT_EQ(out.report.rfind("Provider\\Product\\Path\r\n", 0), 0u);
        const std::string xml = game.xmlOf("P\\Q\\Body\\coach.GeoPcDx");
        std::vector<std::string> values;
        for (long at = tools::InStr(xml, "<e "); at > 0; at = tools::InStr(at + 1, xml, "<e ")) {
            std::string v;
            long pos = at;
            tools::GetDetail(xml, pos, "e", v);
            values.push_back(v);
        }
        EXPECT_EQ(values, c.values);
        EXPECT_TRUE(fs::exists(game.onDisk("P\\Q\\Body\\coach.GeoPcDx.bak")));
    }
}

TEST(ChangeLods, NoRangeOrNoLevelsWritesNothing) {
    struct Case {
        std::vector<std::vector<std::string>> lods;
        std::string reason;
    };
    const Case cases[] = {
        {{{"800", "800"}}, "The LOD range 800 - 800 is empty: nothing was changed."},
        {{}, "No LOD values were found."},
    };
    for (const Case& c : cases) {
        Game game;
        game.put("P\\Q\\C.bin", CoachXml("C", {}, "P\\Q\\Body\\[00]coach"));
        const fs::path geometry = game.put("P\\Q\\Body\\coach.GeoPcDx", GeometryXml(c.lods));
        const std::string before = game.bytesOf("P\\Q\\Body\\coach.GeoPcDx");
        game.okToWarning();
        const TransformOutcome out = ChangeLods(game.ctx, {game.row("P", "Q", "C.bin")}, 0, 2000);
        ASSERT_EQ(out.rows.size(), 1u);
        EXPECT_EQ(out.rows[0].reason, c.reason);
        EXPECT_EQ(game.bytesOf("P\\Q\\Body\\coach.GeoPcDx"), before);
        EXPECT_FALSE(fs::exists(game.onDisk("P\\Q\\Body\\coach.GeoPcDx.bak")));
    }
}

TEST(ChangeLods, TheSamplesGeometryHasNoLevels) {
    const fs::path root = sample::SampleRoot();
    Game game;
    const std::string folder = "Ostvale\\NorthernLines\\RailVehicles\\Diesel\\Class58\\";
    game.putFile(folder + "Engine\\Class58.bin", sample::OnDisk(root, "Assets\\" + folder + "Engine\\Class58.bin"));
    game.putFile(folder + "class58.GeoPcDx", sample::OnDisk(root, "Assets\\" + folder + "class58.GeoPcDx"));
    game.okToWarning();
    const TransformOutcome out = ChangeLods(game.ctx, {game.row("Ostvale", "NorthernLines", kClass58)}, 0, 2000);
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_EQ(out.rows[0].file, game.gameRoot() + "\\Assets\\" + folder + "class58.GeoPcDx");
    EXPECT_EQ(out.rows[0].reason, "No LOD values were found.");
}

TEST(DisplayChildEntries, ListsTheChildrenOfTheFirstRow) {
    const fs::path root = sample::SampleRoot();
    Game game;
    game.putFile("Ostvale\\NorthernLines\\" + kClass58, sample::OnDisk(root, "Assets\\Ostvale\\NorthernLines\\" + kClass58));
    game.put("P\\Q\\C.bin", CoachXml("C", {}));
    const auto one = DisplayChildEntries(game.ctx, {game.row("Ostvale", "NorthernLines", kClass58, "Class 58")});
    ASSERT_TRUE(one);
    EXPECT_EQ(one->caption, "Child Entries For:-");
    EXPECT_EQ(one->name, "Class 58");
    EXPECT_EQ(one->names, (std::vector<std::string>{"EngineSound", "Exhaust"}));
    EXPECT_TRUE(game.ui.texts().empty());
    const auto two = DisplayChildEntries(game.ctx, {game.row("P", "Q", "C.bin"), game.row("Ostvale", "NorthernLines", kClass58)});
    ASSERT_TRUE(two);
    EXPECT_TRUE(two->names.empty());
    EXPECT_EQ(game.ui.texts().back(), "You can only select one item at a time for this option.\r\nOnly the first item will be shown");
    EXPECT_FALSE(DisplayChildEntries(game.ctx, {game.row("P", "Q", "Gone.bin")}));
    EXPECT_FALSE(DisplayChildEntries(game.ctx, {}));
    EXPECT_EQ(game.ui.texts().back(), game.ctx.langText(444));
}

TEST(RemoveChildEntries, SavesTheItemWithoutThemUnderItsNewName) {
    const fs::path root = sample::SampleRoot();
    Game game;
    game.putFile("Ostvale\\NorthernLines\\" + kClass58, sample::OnDisk(root, "Assets\\Ostvale\\NorthernLines\\" + kClass58));
    const std::string before = game.bytesOf("Ostvale\\NorthernLines\\" + kClass58);
    std::vector<std::string> bases;
    const SaveAsAsk ask = [&](const AssetRow&, const std::string& base) {
        bases.push_back(base);
        return SaveAsChoice{base + "_NS", "Class 58 \xE9t\xE9"};
    };
    game.okToWarning();
    const TransformOutcome out =
        RemoveChildEntries(game.ctx, {game.row("Ostvale", "NorthernLines", kClass58)}, {"Exhaust"}, ask);
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_EQ(out.rows[0].reason, "");
    EXPECT_EQ(bases, std::vector<std::string>{"Class58"});
    EXPECT_EQ(game.bytesOf("Ostvale\\NorthernLines\\" + kClass58), before);
    const std::string made = game.xmlOf("Ostvale\\NorthernLines\\RailVehicles\\Diesel\\Class58\\Engine\\Class58_NS.bin");
    EXPECT_EQ(ChildNames(made), std::vector<std::string>{"EngineSound"});
    EXPECT_EQ(Value(made, "English"), "Class 58 \xC3\xA9t\xC3\xA9");
    EXPECT_EQ(Value(made, "Name"), "Class 58 \xC3\xA9t\xC3\xA9");
}

TEST(RemoveChildEntries, CancelInTheNameDialogEndsTheRow) {
    Game game;
    const fs::path coach = game.put("P\\Q\\C.bin", CoachXml("C", {{"Smoke", Tilted()}}));
    game.okToWarning();
    const TransformOutcome out = RemoveChildEntries(game.ctx, {game.row("P", "Q", "C.bin")}, {"Smoke"},
                                                    [](const AssetRow&, const std::string&) { return std::nullopt; });
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_EQ(out.rows[0].reason, "Cancelled.");
    EXPECT_EQ(std::distance(fs::directory_iterator(coach.parent_path()), fs::directory_iterator()), 1);
}

TEST(CorrectSmokeStack, StandsTheEmitterUpright) {
    Game game;
    game.put("P\\Q\\Loco.bin", CoachXml("Loco", {{"Driver", Tilted()}, {"Smoke", Tilted()}}));
    game.put("P\\Q\\Straight.bin", CoachXml("Straight", {{"Smoke", Upright("0", "3", "5")}}));
    const std::string straight = game.bytesOf("P\\Q\\Straight.bin");
    game.okToWarning();
    const TransformOutcome out =
        CorrectSmokeStack(game.ctx, {game.row("P", "Q", "Loco.bin"), game.row("P", "Q", "Straight.bin")}, "Smoke");
    ASSERT_EQ(out.rows.size(), 2u);
    EXPECT_EQ(out.rows[0].reason, "");
    EXPECT_EQ(out.rows[1].reason, "The child entry Smoke already stands upright.");
    EXPECT_EQ(game.bytesOf("P\\Q\\Straight.bin"), straight);
    const std::string xml = game.xmlOf("P\\Q\\Loco.bin");
    const ChildBlock smoke = FindNamedChild(xml, "Smoke");
    ASSERT_TRUE(smoke);
    const TransformResult again = StraightenChild(xml, "Smoke");
    EXPECT_EQ(again.verdict, TransformResult::Verdict::Nothing);
    const TransformResult driver = StraightenChild(xml, "Driver");
    EXPECT_EQ(driver.verdict, TransformResult::Verdict::Changed);  // the other child is as it was
}

TEST(ChildTransforms, NoChildChosenEndsTheCommand) {
    Game game;
    game.put("P\\Q\\Loco.bin", CoachXml("Loco", {{"Smoke", Tilted()}}));
    const std::string before = game.bytesOf("P\\Q\\Loco.bin");
    game.okToWarning();
    EXPECT_FALSE(CorrectSmokeStack(game.ctx, {game.row("P", "Q", "Loco.bin")}, "").ran);
    EXPECT_EQ(game.ui.texts().back(), game.ctx.langText(444));
    game.okToWarning();
    int asked = 0;
    EXPECT_FALSE(RemoveChildEntries(game.ctx, {game.row("P", "Q", "Loco.bin")}, {},
                                    [&](const AssetRow&, const std::string&) {
                                        ++asked;
                                        return std::optional<SaveAsChoice>();
                                    })
                     .ran);
    EXPECT_EQ(asked, 0);
    EXPECT_EQ(game.ui.texts().back(), game.ctx.langText(444));
    EXPECT_EQ(game.bytesOf("P\\Q\\Loco.bin"), before);
}

}  // namespace
}  // namespace ferrolund::assets
