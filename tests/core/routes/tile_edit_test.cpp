#include "routes/tile_edit.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "core/tools/testdata_file.h"
#include "routes/tile_edit_command.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"
#include "tools/serz_convert.h"
#include "tools/text_search.h"

namespace ferrolund::routes {
namespace {

namespace fs = std::filesystem;
using assets::BlueprintRef;

constexpr const char* kRoute = "5a1e0c3b-9d2f-4b7e-8c61-0f3a2d4e6b19";

// A scenery entity as the converter writes it, with its reference.
std::string Entity(int id, const BlueprintRef& ref) {
    return "\t\t<cDynamicEntity d:id=\"" + std::to_string(id) +
           "\">\r\n\t\t\t<BlueprintID>\r\n\t\t\t\t<iBlueprintLibrary-cAbsoluteBlueprintID>\r\n"
           "\t\t\t\t\t<BlueprintSetID>\r\n\t\t\t\t\t\t<iBlueprintLibrary-cBlueprintSetID>\r\n"
           "\t\t\t\t\t\t\t<Provider d:type=\"cDeltaString\">" +
           ref.provider + "</Provider>\r\n\t\t\t\t\t\t\t<Product d:type=\"cDeltaString\">" + ref.product +
           "</Product>\r\n\t\t\t\t\t\t</iBlueprintLibrary-cBlueprintSetID>\r\n\t\t\t\t\t</BlueprintSetID>\r\n"
           "\t\t\t\t\t<BlueprintID d:type=\"cDeltaString\">" +
           ref.blueprintId +
           "</BlueprintID>\r\n\t\t\t\t</iBlueprintLibrary-cAbsoluteBlueprintID>\r\n\t\t\t</BlueprintID>\r\n"
           "\t\t</cDynamicEntity>\r\n";
}

std::string Tile(const std::vector<BlueprintRef>& refs) {
    std::string xml = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<cRecordSet "
                      "xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\" d:id=\"1\">\r\n\t<Record>\r\n";
    int id = 100;
    for (const auto& ref : refs) xml += Entity(id++, ref);
    return xml + "\t</Record>\r\n</cRecordSet>\r\n";
}

const BlueprintRef kTree{"Kuju", "RailSimulator", "Scenery\\Trees\\Oak.xml"};
const BlueprintRef kBigTree{"Kuju", "RailSimulator", "Scenery\\Trees\\BigOak.xml"};
const BlueprintRef kOtherOak{"Hartwell", "SteamHeritage", "Scenery\\Trees\\Oak.xml"};
const BlueprintRef kBirch{"Hartwell", "SteamHeritage", "Scenery\\Trees\\Birch.xml"};

TEST(TileEditCut, TakesTheTripleAndTheKindFromARow) {
    const std::string game = "/home/u/MyAssets/RailWorks";
    const struct {
        std::string row;
        std::optional<BlueprintRef> ref;
        int kind;
    } cases[] = {
        {game + "\\Assets\\Kuju\\RailSimulator\\Scenery\\Trees\\Oak.bin\t(Scenery Item)", kTree, kSceneryKind},
        {game + "\\Assets\\Kuju\\RailSimulator\\Scenery\\Trees\\Oak.bin\t(Loft Item) on tile +000001-000002.bin", kTree,
         kLoftKind},
        {game + "\\Assets\\Kuju\\RailSimulator\\Scenery\\Trees\\Oak.bin  (Road Item)", kTree, kRoadKind},
        {game + "\\assets\\Kuju\\RailSimulator\\Scenery\\Trees\\Oak.BIN\t(track item) on tile Tracks.bin", kTree,
         kTrackKind},
        {game + "\\Assets\\Kuju\\RailSimulator\\Scenery\\Trees\\Oak.bin\t(Interactive)", kTree, 0},
        {game + "\\Assets\\Kuju\\RailSimulator\\Scenery\\Trees\\Oak.bin", kTree, 0},
        {"Assets\\Kuju\\Oak.bin\t(Scenery Item)", std::nullopt, 0},
        {game + "\\Content\\Routes\\abc\\Scenery\\Oak.bin\t(Scenery Item)", std::nullopt, 0},
        {"Rolling stock used in Ostvale", std::nullopt, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.row);
        const auto item = CutGridItem(game, c.row);
        ASSERT_EQ(item.has_value(), c.ref.has_value());
        if (!item) continue;
        EXPECT_EQ(item->ref.provider, c.ref->provider);
        EXPECT_EQ(item->ref.product, c.ref->product);
        EXPECT_EQ(item->ref.blueprintId, c.ref->blueprintId);
        EXPECT_EQ(item->kind, c.kind);
    }
}

TEST(TileEditText, SubstitutesOnlyTheItemWithItsOwnProviderAndProduct) {
    std::string xml = Tile({kTree, kOtherOak, kBigTree, {"kuju", "railsimulator", "scenery\\trees\\oak.XML"}, kTree});
    const BlueprintRef replacement{"  Brackenridge ", "CountryScenery", "Trees\\A much longer name\\Oak2.xml"};
    EXPECT_EQ(SubstituteInTile(xml, kTree, replacement), 3u);
    const BlueprintRef trimmed{"Brackenridge", "CountryScenery", "Trees\\A much longer name\\Oak2.xml"};
    EXPECT_EQ(xml, Tile({trimmed, kOtherOak, kBigTree, trimmed, trimmed}));
    // Nothing left to find, and a short replacement after a long one lands in its own block.
    EXPECT_EQ(SubstituteInTile(xml, kTree, replacement), 0u);
    EXPECT_EQ(SubstituteInTile(xml, trimmed, {"A", "B", "c.xml"}), 3u);
    EXPECT_EQ(xml, Tile({{"A", "B", "c.xml"}, kOtherOak, kBigTree, {"A", "B", "c.xml"}, {"A", "B", "c.xml"}}));
}

TEST(TileEditText, EmptyValuesEmptyTheTriple) {
    std::string xml = Tile({kBirch, kTree});
    EXPECT_EQ(SubstituteInTile(xml, kTree, {}), 1u);
    EXPECT_EQ(xml, Tile({kBirch, {"", "", ""}}));
    std::string loft = Tile({kTree, kBirch, kTree});
    EXPECT_EQ(EmptyLoftInTile(loft, kTree), 2u);
    EXPECT_EQ(loft, Tile({{"", "", ""}, kBirch, {"", "", ""}}));
}

TEST(TileEditText, RemovesTheWholeEntityWithItsLines) {
    std::string xml = Tile({kTree, kBirch, kOtherOak, kTree, kBigTree});
    EXPECT_EQ(RemoveEntitiesInTile(xml, kTree), 2u);
    // The ids of the entities that stay are those they had.
    const std::string expected = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<cRecordSet "
                                 "xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\" d:id=\"1\">\r\n"
                                 "\t<Record>\r\n" +
                                 Entity(101, kBirch) + Entity(102, kOtherOak) + Entity(104, kBigTree) +
                                 "\t</Record>\r\n</cRecordSet>\r\n";
    EXPECT_EQ(xml, expected);
    // A reference outside any entity is not cut.
    std::string loose = "<Record>\r\n" + Entity(1, kBirch).substr(Entity(1, kBirch).find("<BlueprintID>")) +
                        "</Record>\r\n";
    const std::string before = loose;
    EXPECT_EQ(RemoveEntitiesInTile(loose, kBirch), 0u);
    EXPECT_EQ(loose, before);
}

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
    for (const app::Answer answer : {app::Answer::No, app::Answer::Yes}) {
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
        if (answer == app::Answer::No) {
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

TEST(TileEditText, RealTilesStayConvertibleAfterEachEdit) {
    const struct {
        const char* file;
        std::size_t (*edit)(std::string&, const BlueprintRef&);
        const char* counted;  // what each edit takes away from the tile
    } cases[] = {
        {"serz/scenery-tile.bin", RemoveEntitiesInTile, "<cDynamicEntity "},
        {"routes/ff1ebaa8-82f5-43ca-9816-859956f4d56c/Networks/Loft Tiles/+000000+000000.bin", EmptyLoftInTile,
         "<BlueprintID d:type=\"cDeltaString\">Scenery"},
        {"routes/ff1ebaa8-82f5-43ca-9816-859956f4d56c/Networks/Tracks.bin",
         [](std::string& xml, const BlueprintRef& ref) { return SubstituteInTile(xml, ref, kBirch); },
         "<BlueprintID d:type=\"cDeltaString\">RailNetwork"},
    };
    testing::TempFolder app;
    testing::ScriptedUi ui;
    app::AppContext ctx;
    ctx.appRoot = app.system();
    ctx.ui = &ui;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.file);
        FERROLUND_READ_TESTDATA(original, c.file);
        app.write("tile.bin", original);
        std::string xml;
        ASSERT_FALSE(tools::SerzReadXml(ctx, app.system() + "/tile.bin", xml));
        const auto count = [](const std::string& text, const std::string& what) {
            std::size_t n = 0;
            for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++n;
            return n;
        };
        const std::size_t before = count(xml, c.counted);
        // The reference in the first counted place: behind an entity's start, in front of a path.
        const long hit = tools::InStr(xml, c.counted);
        const auto ref = assets::ReadTriple(
            xml, c.counted[1] == 'c' ? tools::InStr(hit, xml, "<Provider") : tools::InStrRev(xml, "<Provider", hit));
        ASSERT_TRUE(ref.has_value());
        const std::size_t places = c.edit(xml, *ref);
        ASSERT_GT(places, 0u);
        EXPECT_EQ(count(xml, c.counted), before - places);
        app.write("edited.xml", xml);
        ASSERT_FALSE(tools::SerzConvert(ctx, app.system() + "/edited.xml", app.system() + "/edited.bin",
                                        tools::SerzDirection::ToBinary));
        std::string back;
        ASSERT_FALSE(tools::SerzReadXml(ctx, app.system() + "/edited.bin", back));
        EXPECT_EQ(count(back, c.counted), before - places);
    }
}

}  // namespace
}  // namespace ferrolund::routes
