// The report grid's tile commands on a small installation: tiles made binary by the
// converter, changed, backed up, or left as they were.

#include <gtest/gtest.h>

#include <filesystem>

#include "core/routes/tile_xml.h"
#include "core/tools/testdata_file.h"
#include "routes/tile_edit_command.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"
#include "tools/serz_convert.h"
#include "tools/text_search.h"

namespace ferrolund::routes {
namespace {

namespace fs = std::filesystem;
using namespace testing_tiles;

constexpr const char* kRoute = "5a1e0c3b-9d2f-4b7e-8c61-0f3a2d4e6b19";

// An installation with one route: two scenery tiles, a loft tile and a scenario's scenery.
struct TileRoute {
    testing::TempFolder app;
    testing::TempFolder game;
    testing::ScriptedUi ui;
    app::AppContext ctx;
    archives::ReportGrid grid;

    TileRoute() {
        ctx.appRoot = app.system();
        ctx.prefs.gameRoot = game.system();
        ctx.ui = &ui;
        grid.mode = archives::kModeRouteItems;
        grid.routeName = "Ostvale Valley";
        grid.routeFolder = kRoute;
        grid.scenarioFolders = {"sc-1", "sc-2"};
        grid.duplicatesRemoved = true;
        tile("Scenery/+000000+000000.bin", {kTree, kBirch});
        tile("Scenery/+000000+000001.bin", {kBirch, kOtherOak});
        tile("Networks/Loft Tiles/+000000+000000.bin", {kTree});
        tile("Scenarios/sc-1/Scenery/+000000+000000.bin", {kTree, kTree});
    }
    std::string route(const std::string& relative) const { return std::string("Content/Routes/") + kRoute + "/" + relative; }
    std::string system(const std::string& relative) const {
        std::string path = game.system() + "\\" + route(relative);
        for (char& ch : path)
            if (ch == '/') ch = '\\';
        return path;
    }
    void tile(const std::string& relative, const std::vector<BlueprintRef>& refs) {
        const auto source = app.write("source.xml", Tile(refs));
        game.write(route(relative), "");
        ASSERT_FALSE(tools::SerzConvert(ctx, source.string(), system(relative), tools::SerzDirection::ToBinary));
    }
    std::string bytes(const std::string& relative) const { return game.read(route(relative)); }
    std::string xml(const std::string& relative) {
        std::string text;
        EXPECT_FALSE(tools::SerzReadXml(ctx, system(relative), text));
        return text;
    }
    // The converter's own text of a tile naming these references.
    std::string expected(const std::vector<BlueprintRef>& refs) {
        tile("Expected/x.bin", refs);
        return xml("Expected/x.bin");
    }
    bool backedUp(const std::string& relative) const { return fs::exists(game.path() / (route(relative) + ".bak")); }
    // Selects the row of the item, as the grid shows a route check's list.
    std::vector<std::size_t> select(const BlueprintRef& ref, const std::string& kind) {
        std::string path = ref.blueprintId;
        path.replace(path.size() - 3, 3, "bin");
        grid.table.rows.push_back(
            {game.system() + "\\Assets\\" + ref.provider + "\\" + ref.product + "\\" + path, kind + " on tile x.bin"});
        grid.missing.push_back(true);
        return {grid.rowCount() - 1};
    }
};

TEST(TileEditCommand, SubstitutesInTheRouteAndItsScenariosWithBackUps) {
    TileRoute r;
    const std::string untouched = r.bytes("Scenery/+000000+000001.bin");
    const std::string loft = r.bytes("Networks/Loft Tiles/+000000+000000.bin");
    const auto rows = r.select(kTree, "(Scenery Item)");
    const BlueprintRef replacement{"R&D", "CountryScenery", "Trees\\Elm's.xml"};
    int asked = 0;
    const TileEditRun run = SubstituteItem(r.ctx, r.grid, rows, [&](const GridItem& old) {
        ++asked;
        EXPECT_EQ(old.ref.blueprintId, kTree.blueprintId);
        EXPECT_EQ(old.kind, kSceneryKind);
        return SubstituteChoice{replacement, kSceneryKind};
    });
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(run.tilesRead, 3u);
    EXPECT_EQ(run.tilesChanged, 2u);
    EXPECT_EQ(run.backups.size(), 2u);
    // The new path in file form: its apostrophe as the program has always written it.
    const BlueprintRef written{"R&amp;D", "CountryScenery", "Trees\\Elm&quot;s.xml"};
    EXPECT_EQ(r.xml("Scenery/+000000+000000.bin"), r.expected({written, kBirch}));
    EXPECT_EQ(tools::InStr(r.xml("Scenarios/sc-1/Scenery/+000000+000000.bin"), "Oak.xml"), 0);
    EXPECT_TRUE(r.backedUp("Scenery/+000000+000000.bin"));
    EXPECT_TRUE(r.backedUp("Scenarios/sc-1/Scenery/+000000+000000.bin"));
    // A tile that does not hold the item, and the loft tile of another kind, stay as they were.
    EXPECT_EQ(r.bytes("Scenery/+000000+000001.bin"), untouched);
    EXPECT_FALSE(r.backedUp("Scenery/+000000+000001.bin"));
    EXPECT_EQ(r.bytes("Networks/Loft Tiles/+000000+000000.bin"), loft);
    EXPECT_EQ(r.ui.texts().back(), "The requested changes have been made.");
    EXPECT_FALSE(r.ui.progressSteps.empty());
}

TEST(TileEditCommand, EmptyNewFieldsRemoveTheTripleOnlyAfterYes) {
    for (const base::Answer answer : {base::Answer::No, base::Answer::Yes}) {
        TileRoute r;
        const std::string before = r.bytes("Networks/Loft Tiles/+000000+000000.bin");
        r.ui.answers = {answer};
        const auto rows = r.select(kTree, "(Loft Item)");
        const TileEditRun run = SubstituteItem(r.ctx, r.grid, rows, [](const GridItem& old) {
            return SubstituteChoice{{}, old.kind};
        });
        ASSERT_FALSE(r.ui.shown.empty());
        EXPECT_EQ(r.ui.shown[0].text, "As you have not included a new Provider, Product or Path, then is it\n"
                                      "correct that you wish the items to be removed from your route?");
        if (answer == base::Answer::No) {
            EXPECT_EQ(r.bytes("Networks/Loft Tiles/+000000+000000.bin"), before);
            EXPECT_EQ(run.tilesRead, 0u);
            EXPECT_EQ(r.ui.shown.size(), 1u);
        } else {
            EXPECT_EQ(run.tilesChanged, 1u);
            EXPECT_EQ(r.xml("Networks/Loft Tiles/+000000+000000.bin"), r.expected({{"", "", ""}}));
            EXPECT_TRUE(r.backedUp("Networks/Loft Tiles/+000000+000000.bin"));
            // Scenery holding the same item is not the loft kind's folder.
            EXPECT_FALSE(r.backedUp("Scenery/+000000+000000.bin"));
        }
    }
}

TEST(TileEditCommand, RefusesBeforeDuplicatesAreRemovedAndWithoutASelection) {
    const std::string dupes = "You must click the 'Remove Duplicates' button\nbefore using this option.";
    const std::string none = "You do not appear to have selected an item to substitute?";
    const std::string interactive =
        "The missing object is an interactive object or track section and\ncan not be substituted by this program. "
        "Item should be deleted\nfrom the World Editor manually.";
    const struct {
        bool dupesRemoved;
        bool select;
        std::string kind;
        std::vector<std::string> texts;  // of the substitution and the two removals
    } cases[] = {
        {false, true, "(Scenery Item)", {dupes, dupes, dupes}},
        {true, false, "(Scenery Item)", {none, none, none}},
        {true, true, "(Signal)", {interactive}},
    };
    for (const auto& c : cases) {
        TileRoute r;
        const std::string before = r.bytes("Scenery/+000000+000000.bin");
        r.grid.duplicatesRemoved = c.dupesRemoved;
        auto rows = r.select(kTree, c.kind);
        if (!c.select) rows.clear();
        SubstituteItem(r.ctx, r.grid, rows, [](const GridItem&) -> std::optional<SubstituteChoice> {
            ADD_FAILURE() << "the dialog must not open";
            return std::nullopt;
        });
        if (c.texts.size() > 1) {
            for (int kind : {kSceneryKind, kLoftKind}) RemoveSelectedItems(r.ctx, r.grid, rows, kind);
        }
        EXPECT_EQ(r.ui.texts(), c.texts);
        EXPECT_EQ(r.bytes("Scenery/+000000+000000.bin"), before);
        EXPECT_FALSE(r.backedUp("Scenery/+000000+000000.bin"));
    }
}

TEST(TileEditCommand, RemovesSelectedSceneryAndLoftItems) {
    TileRoute r;
    auto rows = r.select(kTree, "(Scenery Item)");
    rows.push_back(r.select(kOtherOak, "(Scenery Item)").front());
    const TileEditRun scenery = RemoveSelectedItems(r.ctx, r.grid, rows, kSceneryKind);
    EXPECT_EQ(scenery.tilesChanged, 3u);
    const std::string first = r.xml("Scenery/+000000+000000.bin");
    EXPECT_EQ(tools::InStr(first, "Oak.xml"), 0);
    EXPECT_NE(tools::InStr(first, "Birch.xml"), 0);
    EXPECT_EQ(tools::InStr(r.xml("Scenery/+000000+000001.bin"), "Oak.xml"), 0);
    EXPECT_EQ(tools::InStr(r.xml("Scenarios/sc-1/Scenery/+000000+000000.bin"), "cDynamicEntity"), 0);
    const TileEditRun loft = RemoveSelectedItems(r.ctx, r.grid, rows, kLoftKind);
    EXPECT_EQ(loft.tilesChanged, 1u);
    EXPECT_EQ(r.xml("Networks/Loft Tiles/+000000+000000.bin"), r.expected({{"", "", ""}}));
    EXPECT_EQ(r.ui.texts().back(), "The requested changes have been made.");
}

TEST(TileEditCommand, AFailedConversionBackLeavesTheTile) {
    TileRoute r;
    const std::string before = r.bytes("Scenery/+000000+000000.bin");
    const TileEditRun run =
        EditTiles(r.ctx, KindFolders(r.ctx.gameRoot(), {"", kRoute, {}}, kSceneryKind, false), [](std::string& xml) {
            xml = "<cRecordSet><Record>";  // what no converter can make a tile of
            return std::size_t{1};
        });
    EXPECT_EQ(run.tilesFailed, 2u);
    EXPECT_EQ(run.tilesChanged, 0u);
    EXPECT_EQ(r.bytes("Scenery/+000000+000000.bin"), before);
    EXPECT_FALSE(r.backedUp("Scenery/+000000+000000.bin"));
    EXPECT_EQ(r.ui.texts().front(), "Substitution failed - no changes have been made to the original file.");
}

TEST(TileEditCommand, AbortStopsBetweenTiles) {
    TileRoute r;
    r.ctx.abortFlag = true;
    const TileEditRun run = EditTiles(r.ctx, KindFolders(r.ctx.gameRoot(), {"", kRoute, {}}, kSceneryKind, false),
                                      [](std::string&) { return std::size_t{0}; });
    EXPECT_TRUE(run.aborted);
    EXPECT_EQ(run.tilesRead, 0u);
}

TEST(TileEditCommand, ARealTileIsChangedAndItsBackUpIsTheOriginal) {
    FERROLUND_READ_TESTDATA(original, "serz/scenery-tile.bin");
    TileRoute r;
    r.game.write(r.route("Scenery/+000000+000000.bin"), original);
    std::string xml;
    ASSERT_FALSE(tools::SerzReadXml(r.ctx, r.system("Scenery/+000000+000000.bin"), xml));
    // The first reference of the tile.
    const auto ref = assets::ReadTriple(xml, tools::InStr(xml, "<Provider"));
    ASSERT_TRUE(ref.has_value());
    std::string counting = xml;
    const std::size_t places = SubstituteInTile(counting, *ref, {"Ferrolund", "Tests", "Replaced\\Item.xml"});
    ASSERT_GT(places, 0u);
    const auto rows = r.select(*ref, "(Scenery Item)");
    const TileEditRun run = SubstituteItem(r.ctx, r.grid, rows, [](const GridItem&) {
        return SubstituteChoice{{"Ferrolund", "Tests", "Replaced\\Item.xml"}, kSceneryKind};
    });
    EXPECT_EQ(run.tilesChanged, 1u);
    // Compared with the converter's own round trip of the expected text: the floats of a
    // tile are written back from their printed values.
    r.app.write("expected.xml", counting);
    const std::string expectedBin = r.app.system() + "/expected.bin";
    ASSERT_FALSE(tools::SerzConvert(r.ctx, r.app.system() + "/expected.xml", expectedBin, tools::SerzDirection::ToBinary));
    EXPECT_EQ(r.game.read(r.route("Scenery/+000000+000000.bin")), r.app.read("expected.bin"));
    EXPECT_EQ(r.game.read(r.route("Scenery/+000000+000000.bin.bak")), original);
}
TEST(TileEditCommand, ABrokenTileIsReportedAndLeftWhileTheOthersAreChanged) {
    TileRoute r;
    const std::string broken = std::string("SERZ\0\0\1\0\xff\x50", 10);
    r.game.write(r.route("Scenery/+000000+000002.bin"), broken);
    const TileEditRun run = RemoveSelectedItems(r.ctx, r.grid, r.select(kBirch, "(Scenery Item)"), kSceneryKind);
    EXPECT_EQ(run.tilesRead, 3u);  // two tiles of the route, one of the scenario; the broken one not
    EXPECT_EQ(run.tilesChanged, 2u);
    EXPECT_EQ(r.bytes("Scenery/+000000+000002.bin"), broken);
    EXPECT_FALSE(r.backedUp("Scenery/+000000+000002.bin"));
    ASSERT_GE(r.ui.shown.size(), 2u);
    EXPECT_EQ(r.ui.shown.front().icon, base::Icon::Critical);
    EXPECT_NE(r.ui.shown.front().text.find("+000000+000002.bin"), std::string::npos);
    EXPECT_EQ(r.ui.texts().back(), "The requested changes have been made.");
}

}  // namespace
}  // namespace ferrolund::routes
