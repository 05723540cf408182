#include "routes/asset_locations.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "core/routes/location_test_support.h"

namespace ferrolund::routes {
namespace {

namespace fs = std::filesystem;
using testing::Entity;
using testing::LocationGame;
using testing::Reference;
using testing::TrackRibbon;

TEST(AssetLocations, TileNumbersAsTheTilesNamesWriteThem) {
    const std::pair<const char*, const char*> cases[] = {
        {"0", "+000000"},   {"123", "+000123"},  {"-45", "-000045"}, {"-1", "-000001"}, {"1234567", "+1234567"},
        {" 7 ", "+000007"}, {"-2.0", "-000002"}, {"", ""},           {"abc", "abc"},    {"12x", "12x"},
    };
    for (const auto& [distance, expected] : cases) EXPECT_EQ(TileNumber(distance), expected) << distance;
}

TEST(AssetLocations, PlaceOfAnItemARibbonAndABrokenBlock) {
    const BlockPlace item = PlaceOfBlock(Entity("-3", "48.6251", "12", "71.0197", Reference("P", "Q", "a.xml")));
    EXPECT_EQ(item.tile, "-000003+000012");
    EXPECT_EQ(item.offsetX, "48.6251");
    EXPECT_EQ(item.offsetZ, "71.0197");

    const BlockPlace ribbon =
        PlaceOfBlock(TrackRibbon("-1", "1", "696.2937012 839.1111450", Reference("P", "Q", "t.xml")));
    EXPECT_EQ(ribbon.tile, "-000001+000001");
    EXPECT_EQ(ribbon.offsetX, "696.2937012");
    EXPECT_EQ(ribbon.offsetZ, "839.1111450");

    // A far vector behind the first reference is a child's (a signal on the track).
    const BlockPlace withChild =
        PlaceOfBlock(TrackRibbon("4", "-5", "1 2", Reference("P", "Q", "t.xml") + Entity("9", "3", "9", "3", "")));
    EXPECT_EQ(withChild.tile, "+000004-000005");
    EXPECT_EQ(withChild.offsetX, "1");

    EXPECT_EQ(PlaceOfBlock("<cDynamicEntity>\r\n" + Reference("P", "Q", "a.xml") + "</cDynamicEntity>").tile, "");
}

TEST(AssetLocations, ItemsOfATileWithTheMissingOnes) {
    LocationGame g;
    g.asset("Hartwell/SteamHeritage/Trees/Oak.bin");
    const LocationWalk walk = LocationWalks(g.game(), "r", {})[0];
    ASSERT_EQ(walk.blockTag, "<cDynamicEntity");
    const std::string xml = "<Record>\r\n" +
                            Entity("0", "48.5", "-1", "2.25",
                                   Reference("hartwell", "steamheritage", "trees\\OAK.xml") + Reference("", "", "")) +
                            Entity("0", "1", "-1", "2", Reference("Hartwell", "SteamHeritage", "Gone.xml")) +
                            "<cDynamicEntityList>\r\n" + Reference("X", "Y", "notAnItem.xml") +
                            "</cDynamicEntityList>\r\n" +
                            Entity("0", "5", "-1", "6", Reference("Hartwell", "", "NoProduct.xml")) + "</Record>\r\n";
    LocationRun run;
    ScanTileLocations(g.ctx, xml, "+000000-000001.bin", walk, run);
    ASSERT_EQ(run.items.size(), 2u);
    EXPECT_EQ(run.items[0].path, g.game() + "\\Assets\\hartwell\\steamheritage\\trees\\OAK.bin");
    EXPECT_EQ(run.items[0].where(), "(Scenery Item) on tile +000000-000001 at 48.5, 2.25");
    ASSERT_EQ(run.missing.size(), 1u);
    EXPECT_EQ(run.missing[0].path, g.game() + "\\Assets\\Hartwell\\SteamHeritage\\Gone.bin");
    EXPECT_TRUE(g.ui.shown.empty());
}

TEST(AssetLocations, ABrokenProviderLineEndsTheTileWithTheBox) {
    LocationGame g;
    const LocationWalk walk = LocationWalks(g.game(), "r", {})[0];
    LocationRun run;
    ScanTileLocations(g.ctx,
                      "<cDynamicEntity>\r\n<Provider d:type=\"cDeltaString\">Broken\r\n</cDynamicEntity>\r\n" +
                          Entity("0", "1", "0", "1", Reference("P", "Q", "a.xml")),
                      "+000000+000000.bin", walk, run);
    EXPECT_TRUE(run.items.empty());
    ASSERT_EQ(g.ui.shown.size(), 1u);
    EXPECT_EQ(g.ui.shown[0].text.substr(0, 50), "There is an error in a Provider description in til");
}

TEST(AssetLocations, ARouteWithoutLooseSceneryIsNotWalked) {
    for (const bool emptyFolder : {false, true}) {
        LocationGame g;
        if (emptyFolder) fs::create_directories(g.root.path() / "game/Content/Routes/r/Scenery");
        g.tile("Content/Routes/r/Networks/Tracks.bin", TrackRibbon("0", "0", "1 2", Reference("P", "Q", "t.xml")));
        const LocationOutcome out = ShowAssetLocations(g.ctx, {"Brill Line", "r", {}});
        EXPECT_TRUE(out.stopped);
        EXPECT_TRUE(out.run.items.empty());
        EXPECT_EQ(g.ui.texts(),
                  std::vector<std::string>{"There is no 'Scenery' folder for this Brill Line, must "
                                           "assume\nit is held in an .ap folder and can't be checked here."});
    }
}

TEST(AssetLocations, MadeRouteOnlyTracksBinOfTheNetworksAndTheScenariosScenery) {
    LocationGame g;
    g.asset("P/Q/Present.bin");
    ASSERT_TRUE(g.tile("Content/Routes/r/Scenery/-000002+000003.bin",
                       "<Record>\r\n" + Entity("-2", "10.5", "3", "20.5", Reference("P", "Q", "Present.xml")) +
                           Entity("-2", "11", "3", "21", Reference("P", "Q", "Gone.xml")) + "</Record>\r\n"));
    ASSERT_TRUE(
        g.tile("Content/Routes/r/Networks/Tracks.bin",
               "<Record>\r\n" + TrackRibbon("-1", "0", "5 6", Reference("P", "Q", "Track.xml")) + "</Record>\r\n"));
    ASSERT_TRUE(
        g.tile("Content/Routes/r/Networks/Lofts.bin",
               "<Record>\r\n" + TrackRibbon("-1", "0", "5 6", Reference("P", "Q", "NotRead.xml")) + "</Record>\r\n"));
    ASSERT_TRUE(
        g.tile("Content/Routes/r/Scenarios/s1/Scenery/+000000+000000.bin",
               "<Record>\r\n" + Entity("0", "1", "0", "2", Reference("P", "Q", "Present.xml")) + "</Record>\r\n"));
    const LocationOutcome out = ShowAssetLocations(g.ctx, {"Brill Line", "r", {"s1", "absent"}});
    ASSERT_FALSE(out.stopped);
    const std::string assets = g.game() + "\\Assets\\P\\Q\\";
    EXPECT_EQ(out.listing.heading, "Following item(s) were used by  Brill Line:-");
    const std::vector<std::vector<std::string>> rows{
        {assets + "Gone.bin", "(Scenery Item) on tile -000002+000003 at 11, 21"},
        {assets + "Present.bin", "(Scenery Item) on tile +000000+000000 at 1, 2"},
        {assets + "Present.bin", "(Scenery Item) on tile -000002+000003 at 10.5, 20.5"},
        {assets + "Track.bin", "(Track Item) on tile -000001+000000 at 5, 6"},
    };
    EXPECT_EQ(out.listing.rows, rows);
    EXPECT_EQ(out.listing.missingRows, (std::vector<bool>{true, false, false, true}));
    EXPECT_EQ(out.missingText, "Following Asset(s) were missing from Brill Line:-\r\n" + assets +
                                   "Gone.bin (Scenery Item) on tile -000002+000003 at 11, 21\r\n" + assets +
                                   "Track.bin (Track Item) on tile -000001+000000 at 5, 6");
    EXPECT_FALSE(g.ui.progressSteps.empty());
}

TEST(AssetLocations, AbortBetweenTilesStopsTheWalk) {
    LocationGame g;
    ASSERT_TRUE(g.tile("Content/Routes/r/Scenery/+000000+000000.bin",
                       "<Record>\r\n" + Entity("0", "1", "0", "2", Reference("P", "Q", "A.xml")) + "</Record>\r\n"));
    g.ctx.abortFlag = true;
    const LocationOutcome out = ShowAssetLocations(g.ctx, {"Brill Line", "r", {}});
    EXPECT_TRUE(out.stopped);
    EXPECT_TRUE(out.run.items.empty());
}

TEST(AssetLocations, RealRouteItemsLoftsRoadsAndTracksWithTheirPlaces) {
    LocationGame g;
    if (!g.copyRealRoute()) GTEST_SKIP() << "the real route is not in " << FERROLUND_TESTDATA << "/routes";
    g.asset("ChrisTrains/RailSimulator/Scenery/StationObjects/PerronNummers/NS Plain Pole.bin");
    const LocationOutcome out = ShowAssetLocations(g.ctx, {"Academy", testing::kRealRoute, {}});
    ASSERT_FALSE(out.stopped);
    const std::string assets = g.game() + "\\Assets\\ChrisTrains\\RailSimulator\\";
    auto has = [&](const std::string& path, const std::string& where) {
        for (const auto& row : out.listing.rows)
            if (row[0] == path && row[1] == where) return true;
        return false;
    };
    EXPECT_TRUE(has(assets + "Scenery\\StationObjects\\PerronNummers\\NS Plain Pole.bin",
                    "(Scenery Item) on tile +000000+000000 at 48.6251, 71.0197"));
    EXPECT_TRUE(has(assets + "Scenery\\Procedural\\NS Platforms\\NSPlatEdgeB6m.bin",
                    "(Loft Item) on tile -000001+000000 at 989.683, 278.941"));
    EXPECT_TRUE(has(assets + "Scenery\\Procedural\\NL CyclePath\\NL_CyclePath_Grey.bin",
                    "(Road Item) on tile -000001+000000 at 854.256, 530.639"));
    EXPECT_TRUE(has(assets + "RailNetwork\\NS Tracks\\NS Trk Grey Conc Clean NB.bin",
                    "(Track Item) on tile -000001+000001 at 696.2937012, 839.1111450"));
    for (const auto& row : out.listing.rows)
        EXPECT_TRUE(row[1].find(" on tile +0000") != std::string::npos ||
                    row[1].find(" on tile -0000") != std::string::npos)
            << row[1];
    EXPECT_EQ(out.missingText.rfind("Following Asset(s) were missing from Academy:-\r\n", 0), 0u);
    EXPECT_EQ(out.missingText.find("NS Plain Pole"), std::string::npos);
    EXPECT_NE(out.missingText.find("NSPlatEdgeB6m.bin (Loft Item) on tile -000001+000000"), std::string::npos);
}

}  // namespace
}  // namespace ferrolund::routes
