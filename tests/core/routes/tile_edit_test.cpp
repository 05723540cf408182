#include "routes/tile_edit.h"

#include <gtest/gtest.h>

#include "core/routes/tile_xml.h"
#include "core/tools/testdata_file.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"
#include "tools/serz_convert.h"
#include "tools/text_search.h"

namespace ferrolund::routes {
namespace {

using namespace testing_tiles;

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
