#include "assets/transform_frame.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "assets/blueprint_splice.h"
#include "assets/stock_transforms.h"
#include "core/sample/sample_fixture.h"
#include "core/tools/testdata_file.h"
#include "stock_fixture.h"
#include "support/locked_folder.h"

namespace ferrolund::assets {
namespace {

namespace fs = std::filesystem;
using testing::CoachXml;
using testing::Game;
using testing::Siblings;
using testing::Tilted;
using testing::Upright;
using Verdict = TransformResult::Verdict;

const std::string kCoach = "RailVehicles\\Wägen\\Coach.bin";
const std::string kCoachFile = "Prov\\Prod\\" + kCoach;

// A transform that puts a new child at the head of the list.
TransformCommand AddChild() {
    return TransformCommand("test", TransformFile::Blueprint, [](app::AppContext&, TransformRow&, std::string_view text) {
        TransformResult result = TransformResult::Changed(std::string(text));
        SpliceAtChildren(result.text, "<cEntityContainerBlueprint-sChild>\r\n"
                                          "<ChildName d:type=\"cDeltaString\">Added</ChildName>\r\n"
                                          "</cEntityContainerBlueprint-sChild>\r\n");
        return result;
    });
}

// AddChild with its result written beside the original as <base>_X.bin.
TransformCommand SavingBeside(bool recompileOriginal) {
    TransformCommand command = AddChild();
    const Transform add = command.transform;
    command.transform = [add, recompileOriginal](app::AppContext& ctx, TransformRow& row, std::string_view text) {
        TransformResult result = add(ctx, row, text);
        result.saveAs = row.base + "_X.bin";
        result.recompileOriginal = recompileOriginal;
        return result;
    };
    return command;
}

// A transform that gives the same answer for every row.
TransformCommand Giving(Verdict verdict, std::string text = {}) {
    return TransformCommand("test", TransformFile::Blueprint, [=](app::AppContext&, TransformRow&, std::string_view original) {
        TransformResult result = TransformResult::Skip(verdict, "why");
        result.text = text.empty() ? std::string(original) : text;
        return result;
    });
}

TEST(TransformFrame, WritesTheChangeKeepsTheOriginalAndDropsTheCache) {
    Game game;
    const fs::path coach = game.put(kCoachFile, CoachXml("Old Coach", {{"Smoke", Tilted()}}));
    const std::string before = game.bytesOf(kCoachFile);
    const fs::path cache = game.folder.write("game/Assets/BluePrints.pak", "cache");
    game.okToWarning();
    const TransformOutcome out = RunTransform(game.ctx, {game.row("Prov", "Prod", kCoach)}, AddChild());
    ASSERT_TRUE(out.ran);
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_EQ(out.rows[0].reason, "");
    EXPECT_EQ(game.bytesOf(kCoachFile + ".bak"), before);
    EXPECT_EQ(ChildNames(game.xmlOf(kCoachFile)), (std::vector<std::string>{"Added", "Smoke"}));
    EXPECT_FALSE(fs::exists(cache));
    EXPECT_EQ(Siblings(coach), (std::vector<fs::path>{"Coach.bin", "Coach.bin.bak"}));
    EXPECT_EQ(out.report, "Prov\\Prod\\" + kCoach + "  Requested changes have been made.\r\n");
    const auto texts = game.ui.texts();
    ASSERT_EQ(texts.size(), 2u);
    EXPECT_EQ(texts[0], game.ctx.langText(446) + "\r\n" + game.ctx.langText(447));
    EXPECT_EQ(texts[1], game.ctx.langText(445));
}

int Count(const std::string& text, const std::string& what) {
    int n = 0;
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++n;
    return n;
}

// A real blueprint with an empty list and the sample's locomotive with a full one.
TEST(TransformFrame, BothFormsOfTheChildListEndAsOneBlock) {
    struct Case {
        std::string relative;
        std::filesystem::path source;
        std::vector<std::string> children;
    };
    const fs::path real = ferrolund::testing::TestdataPath("serz/scenery-item.bin");
    if (!fs::exists(real)) GTEST_SKIP() << "real game file serz/scenery-item.bin is absent: the shared test data is not beside this checkout";
    const std::string loco = "Ostvale\\NorthernLines\\RailVehicles\\Diesel\\Class58\\Engine\\Class58.bin";
    const Case cases[] = {
        {"AP\\VegEP\\Scenery\\Beech1.bin", real, {"Added"}},
        {loco, sample::OnDisk(sample::SampleRoot(), "Assets\\" + loco), {"Added", "EngineSound", "Exhaust"}},
    };
    for (const Case& c : cases) {
        Game game;
        game.putFile(c.relative, c.source);
        const std::string before = game.xmlOf(c.relative);
        game.okToWarning();
        const std::size_t second = c.relative.find('\\', 0), third = c.relative.find('\\', second + 1);
        const TransformOutcome out = RunTransform(
            game.ctx,
            {game.row(c.relative.substr(0, second), c.relative.substr(second + 1, third - second - 1),
                      c.relative.substr(third + 1))},
            AddChild());
        ASSERT_EQ(out.rows.size(), 1u) << c.relative;
        EXPECT_EQ(out.rows[0].reason, "") << c.relative;
        const std::string after = game.xmlOf(c.relative);
        EXPECT_EQ(ChildNames(after), c.children) << c.relative;
        EXPECT_EQ(Count(after, "<Children>"), 1) << c.relative;
        EXPECT_EQ(Count(after, "</Children>"), 1) << c.relative;
        EXPECT_EQ(Count(after, "<Children/>"), 0) << c.relative;
        // Nothing else moved: without the new block the text says what it said before.
        std::string without = after;
        const ChildBlock added = FindNamedChild(without, "Added");
        ASSERT_TRUE(added) << c.relative;
        without.erase(static_cast<std::size_t>(added.start - 1), static_cast<std::size_t>(added.length));
        EXPECT_FALSE(SameXmlContent(before, after)) << c.relative;
        EXPECT_TRUE(SameXmlContent(before, without)) << c.relative;
    }
}

TEST(TransformFrame, CancelOrNoRowsDoNothing) {
    Game game;
    game.put(kCoachFile, CoachXml("Old Coach", {}));
    const std::string before = game.bytesOf(kCoachFile);
    const fs::path cache = game.folder.write("game/Assets/BluePrints.pak", "cache");
    game.ui.answers.push_back(base::Answer::Cancel);
    EXPECT_FALSE(RunTransform(game.ctx, {game.row("Prov", "Prod", kCoach)}, AddChild()).ran);
    game.okToWarning();
    EXPECT_FALSE(RunTransform(game.ctx, {game.row("", "Prod", kCoach)}, AddChild()).ran);
    EXPECT_EQ(game.ui.texts().back(), game.ctx.langText(444));
    EXPECT_EQ(game.bytesOf(kCoachFile), before);
    EXPECT_TRUE(fs::exists(cache));
}

TEST(TransformFrame, ACompileThatFailsLeavesTheOriginal) {
    struct Case {
        std::string name;
        std::string text;
    };
    std::string differs = CoachXml("Old Coach", {});
    // An integer with a leading nought compiles, and comes back without it.
    const std::string mass = "<Mass d:type=\"sFloat32\" d:precision=\"string\">32.5</Mass>";
    differs.replace(differs.find(mass), mass.size(), "<Mass d:type=\"sInt32\">032</Mass>");
    const Case cases[] = {
        {"broken XML", "<cBlueprintLoader><Blueprint>"},
        {"read back differs", differs},
    };
    for (const Case& c : cases) {
        Game game;
        const fs::path coach = game.put(kCoachFile, CoachXml("Old Coach", {}));
        const std::string before = game.bytesOf(kCoachFile);
        game.okToWarning();
        const TransformOutcome out =
            RunTransform(game.ctx, {game.row("Prov", "Prod", kCoach)}, Giving(Verdict::Changed, c.text));
        ASSERT_EQ(out.rows.size(), 1u) << c.name;
        const std::string message = "Serz.exe could not convert file " + game.gameRoot() + "\\Assets\\" + kCoachFile +
                                    "\r\nThis is a limitation of Serz.exe and out of my control.";
        EXPECT_EQ(out.rows[0].reason, message) << c.name;
        const auto texts = game.ui.texts();
        EXPECT_NE(std::find(texts.begin(), texts.end(), message), texts.end()) << c.name;
        EXPECT_EQ(game.bytesOf(kCoachFile), before) << c.name;
        EXPECT_EQ(Siblings(coach), std::vector<fs::path>{"Coach.bin"}) << c.name;
    }
}

TEST(TransformFrame, FiftyOneBackupsLeaveNoNewOne) {
    Game game;
    const fs::path coach = game.put(kCoachFile, CoachXml("Old Coach", {}));
    game.folder.write(fs::relative(coach, game.folder.path()).string() + ".bak", "0");
    for (int n = 1; n <= 50; ++n)
        game.folder.write(fs::relative(coach, game.folder.path()).string() + ".bak" + std::to_string(n), std::to_string(n));
    game.okToWarning();
    const TransformOutcome out = RunTransform(game.ctx, {game.row("Prov", "Prod", kCoach)}, AddChild());
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_EQ(out.rows[0].reason, "");
    EXPECT_EQ(out.rows[0].backup, "");
    EXPECT_EQ(ChildNames(game.xmlOf(kCoachFile)), std::vector<std::string>{"Added"});
    EXPECT_EQ(Siblings(coach).size(), 52u);  // the file and its 51 old back-ups, nothing else
    EXPECT_EQ(game.bytesOf(kCoachFile + ".bak7"), "7");
}

TEST(TransformFrame, AFolderThatCannotBeWrittenLosesNothing) {
    Game game;
    const fs::path coach = game.put(kCoachFile, CoachXml("Old Coach", {}));
    const std::string before = game.bytesOf(kCoachFile);
    TransformOutcome out;
    {
        ferrolund::testing::LockedFolder lock(coach.parent_path());
        if (!lock.locked()) GTEST_SKIP() << "the folder cannot be locked against this user";
        game.okToWarning();
        out = RunTransform(game.ctx, {game.row("Prov", "Prod", kCoach)}, AddChild());
    }
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_EQ(out.rows[0].written, "");
    EXPECT_FALSE(out.rows[0].reason.empty());
    EXPECT_EQ(game.bytesOf(kCoachFile), before);
    EXPECT_EQ(Siblings(coach), std::vector<fs::path>{"Coach.bin"});
}

// Root passes any permission; a folder standing where the new file must go stops it too.
TEST(TransformFrame, ATargetThatCannotBeReplacedLeavesNoPartBehind) {
    Game game;
    const fs::path coach = game.put(kCoachFile, CoachXml("Old Coach", {}));
    const std::string before = game.bytesOf(kCoachFile);
    fs::create_directories(coach.parent_path() / "Coach_X.bin" / "inside");
    const TransformCommand command = SavingBeside(false);
    game.okToWarning();
    const TransformOutcome out = RunTransform(game.ctx, {game.row("Prov", "Prod", kCoach)}, command);
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_EQ(out.rows[0].written, "");
    EXPECT_FALSE(out.rows[0].reason.empty());
    EXPECT_EQ(game.bytesOf(kCoachFile), before);
    EXPECT_EQ(Siblings(coach), (std::vector<fs::path>{"Coach.bin", "Coach_X.bin"}));
    EXPECT_TRUE(fs::is_directory(coach.parent_path() / "Coach_X.bin" / "inside"));
    EXPECT_TRUE(fs::exists(game.folder.path() / "app" / "Errors.txt"));
}

TEST(TransformFrame, AnAbortStopsBetweenRows) {
    Game game;
    const std::string second = "Prov\\Prod\\RailVehicles\\Two\\Coach.bin";
    game.put(kCoachFile, CoachXml("One", {}));
    const fs::path two = game.put(second, CoachXml("Two", {}));
    const std::string before = game.bytesOf(second);
    TransformCommand command = AddChild();
    const Transform add = command.transform;
    // "&Abort" is pressed while the first row is under way.
    command.transform = [add](app::AppContext& ctx, TransformRow& row, std::string_view text) {
        ctx.abortFlag = true;
        return add(ctx, row, text);
    };
    game.okToWarning();
    const TransformOutcome out = RunTransform(
        game.ctx, {game.row("Prov", "Prod", kCoach), game.row("Prov", "Prod", "RailVehicles\\Two\\Coach.bin")}, command);
    EXPECT_TRUE(out.aborted);
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_EQ(ChildNames(game.xmlOf(kCoachFile)), std::vector<std::string>{"Added"});
    EXPECT_EQ(game.bytesOf(second), before);
    EXPECT_EQ(Siblings(two), std::vector<fs::path>{"Coach.bin"});
}

TEST(TransformFrame, AMissingFileIsReportedAndTheWalkGoesOn) {
    Game game;
    game.put(kCoachFile, CoachXml("One", {}));
    game.folder.write("game/Assets/Prov/Prod/Broken.bin", "SERZ\x00\x00\x01\x00\xFF");
    game.okToWarning();
    const TransformOutcome out = RunTransform(game.ctx,
                                              {game.row("Prov", "Prod", "Gone.bin"), game.row("Prov", "Prod", "Broken.bin"),
                                               game.row("Prov", "Prod", kCoach)},
                                              AddChild());
    ASSERT_EQ(out.rows.size(), 3u);
    EXPECT_NE(out.rows[0].reason.find("does not exist"), std::string::npos);
    EXPECT_NE(out.rows[1].reason.find("Serz.exe could not convert file"), std::string::npos);
    EXPECT_EQ(out.rows[2].reason, "");
}

TEST(TransformFrame, ANewNameIsWrittenBesideTheOriginal) {
    Game game;
    const fs::path coach = game.put(kCoachFile, CoachXml("Old Coach", {}));
    const std::string before = game.bytesOf(kCoachFile);
    const TransformCommand command = SavingBeside(false);
    for (int run = 0; run < 2; ++run) {
        game.okToWarning();
        const TransformOutcome out = RunTransform(game.ctx, {game.row("Prov", "Prod", kCoach)}, command);
        ASSERT_EQ(out.rows.size(), 1u);
        EXPECT_EQ(out.rows[0].written, game.gameRoot() + "\\Assets\\Prov\\Prod\\RailVehicles\\Wägen\\Coach_X.bin");
        EXPECT_EQ(out.rows[0].backup.empty(), run == 0);  // a second run keeps the first result
    }
    EXPECT_EQ(game.bytesOf(kCoachFile), before);
    EXPECT_EQ(Siblings(coach), (std::vector<fs::path>{"Coach.bin", "Coach_X.bin", "Coach_X.bin.bak"}));
}

// Companions follow the written file, each with its own back-up; one that cannot be
// written is told in the report and takes nothing else with it.
TEST(TransformFrame, CompanionFilesFollowTheFileWithTheirOwnBackups) {
    Game game;
    game.put(kCoachFile, CoachXml("Old Coach", {}));
    const fs::path script = game.folder.write("game/Assets/Prov/Prod/RailVehicles/Wägen/coach.lua", "old");
    const std::string present = game.gameRoot() + "\\Assets\\Prov\\Prod\\RailVehicles\\Wägen\\coach.lua";
    const std::string unreachable = game.gameRoot() + "\\Assets\\Nowhere\\x.lua";
    TransformCommand command = AddChild();
    const Transform add = command.transform;
    command.transform = [&](app::AppContext& ctx, TransformRow& row, std::string_view text) {
        TransformResult result = add(ctx, row, text);
        result.companions = {{unreachable, "lost", {}}, {present, "new", "Script.lua"}};
        return result;
    };
    game.okToWarning();
    const TransformOutcome out = RunTransform(game.ctx, {game.row("Prov", "Prod", kCoach)}, command);
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_FALSE(out.rows[0].written.empty());
    EXPECT_EQ(out.rows[0].companions, std::vector<std::string>{present});
    EXPECT_EQ(game.bytesOf("Prov\\Prod\\RailVehicles\\Wägen\\coach.lua"), "new");
    EXPECT_EQ(game.bytesOf("Prov\\Prod\\RailVehicles\\Wägen\\coach.lua.bak"), "old");
    EXPECT_TRUE(fs::exists(game.folder.path() / "app" / "TempFiles" / "Script.lua"));
    EXPECT_NE(out.report.find("Requested changes have been made.  " + unreachable + " could not be written: "),
              std::string::npos)
        << out.report;
}

TEST(TransformFrame, ALocatedFileIsChangedInPlaceOfTheRows) {
    Game game;
    game.put(kCoachFile, CoachXml("Loco", {}));
    game.put("Prov\\Prod\\Cab\\Inside.bin", CoachXml("Inside", {}));
    const std::string loco = game.bytesOf(kCoachFile);
    TransformCommand command = AddChild();
    std::vector<std::string> asked;
    command.locate = [&](app::AppContext& ctx, const std::string& file, std::string& reason) -> std::string {
        asked.push_back(file);
        if (asked.size() == 2) {
            reason = "no cab";
            return {};
        }
        return ctx.gameRoot() + "\\Assets\\Prov\\Prod\\Cab\\Inside.bin";
    };
    game.okToWarning();
    const auto out = RunTransform(game.ctx,
                                  {game.row("Prov", "Prod", kCoach), game.row("Prov", "Prod", kCoach),
                                   game.row("Prov", "Prod", "Gone.bin")},
                                  command);
    ASSERT_EQ(out.rows.size(), 3u);
    EXPECT_EQ(out.rows[0].written, game.gameRoot() + "\\Assets\\Prov\\Prod\\Cab\\Inside.bin");
    EXPECT_EQ(out.rows[1].reason, "no cab");
    EXPECT_EQ(out.rows[2].reason, "The file " + game.gameRoot() + "\\Assets\\Prov\\Prod\\Gone.bin does not exist.");
    EXPECT_EQ(asked.size(), 2u);  // a missing blueprint names nothing
    EXPECT_EQ(game.bytesOf(kCoachFile), loco);
    EXPECT_EQ(ChildNames(game.xmlOf("Prov\\Prod\\Cab\\Inside.bin")), std::vector<std::string>{"Added"});
}

TEST(TransformFrame, ANewNameCanHaveTheOriginalCompiledAgainBesideIt) {
    Game game;
    const fs::path coach = game.put(kCoachFile, CoachXml("Old Coach", {}));
    const std::string before = game.bytesOf(kCoachFile);
    const TransformCommand command = SavingBeside(true);
    game.okToWarning();
    const TransformOutcome out = RunTransform(game.ctx, {game.row("Prov", "Prod", kCoach)}, command);
    ASSERT_EQ(out.rows.size(), 1u);
    EXPECT_EQ(out.rows[0].reason, "");
    EXPECT_EQ(Siblings(coach), (std::vector<fs::path>{"Coach.bin", "Coach.bin.bak", "Coach_X.bin"}));
    EXPECT_EQ(game.bytesOf(kCoachFile + ".bak"), before);
    EXPECT_EQ(game.bytesOf(kCoachFile), before);  // a converter-written file compiles back byte for byte
    EXPECT_EQ(ChildNames(game.xmlOf("Prov\\Prod\\RailVehicles\\Wägen\\Coach_X.bin")), std::vector<std::string>{"Added"});
}

TEST(SameXmlContent, LayoutAndTheConvertersNumberFormsDoNotCount) {
    const std::string base = "<a><m d:type=\"sFloat32\" d:alt_encoding=\"0\" d:precision=\"string\">2000.0000</m>"
                             "<s d:type=\"cDeltaString\">x y</s><v d:numElements=\"2\" d:elementType=\"sFloat32\">1 2</v></a>";
    struct Case {
        std::string other;
        bool same;
    };
    const Case cases[] = {
        {base, true},
        {"<a>\r\n\t<m d:type=\"sFloat32\" d:alt_encoding=\"009F\" d:precision=\"string\">2000</m>\r\n"
         "\t<s d:type=\"cDeltaString\">x y</s>\r\n\t<v d:numElements=\"2\" d:elementType=\"sFloat32\">1.0000000 2.0000000</v></a>",
         true},
        {"<a><m d:type=\"sFloat32\" d:precision=\"string\">1234.57</m><s d:type=\"cDeltaString\">x y</s>"
         "<v d:numElements=\"2\" d:elementType=\"sFloat32\">1 2</v></a>",
         false},
        {"<a><m d:type=\"sFloat32\" d:precision=\"string\">2000</m><s d:type=\"cDeltaString\">x  y</s>"
         "<v d:numElements=\"2\" d:elementType=\"sFloat32\">1 2</v></a>",
         false},  // a string is compared as it stands
        {"<a><m d:type=\"sFloat32\" d:precision=\"string\">2000</m><s d:type=\"cDeltaString\">x y</s></a>", false},
        {"<a><m d:type=\"sInt32\" d:precision=\"string\">2000</m><s d:type=\"cDeltaString\">x y</s>"
         "<v d:numElements=\"2\" d:elementType=\"sFloat32\">1 2</v></a>",
         false},
        {"<a><m>", false},
        {"", false},
    };
    for (const Case& c : cases) EXPECT_EQ(SameXmlContent(base, c.other), c.same) << c.other;
    EXPECT_TRUE(SameXmlContent(CoachXml("é", {{"Smoke", Tilted()}}), CoachXml("é", {{"Smoke", Tilted()}})));
    EXPECT_FALSE(SameXmlContent(CoachXml("é", {{"Smoke", Tilted()}}), CoachXml("e", {{"Smoke", Tilted()}})));
}

}  // namespace
}  // namespace ferrolund::assets
