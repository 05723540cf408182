#include "routes/provider_usage.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "core/routes/location_test_support.h"
#include "tools/codepage.h"

namespace ferrolund::routes {
namespace {

namespace fs = std::filesystem;
using testing::Entity;
using testing::LocationGame;
using testing::Reference;

CheckAnswers NoLists() {
    CheckAnswers answers;
    answers.listTextures = false;
    answers.listAudio = false;
    return answers;
}

std::vector<std::string> FirstColumn(const ReportListing& listing) {
    std::vector<std::string> column;
    for (const auto& row : listing.rows) column.push_back(row.at(0));
    return column;
}

TEST(ProviderUsage, ProvidersOfTheRealRouteSorted) {
    LocationGame g;
    if (!g.copyRealRoute()) GTEST_SKIP() << "the real route is not in " << FERROLUND_TESTDATA << "/routes";
    std::vector<std::pair<std::string, std::string>> pairs;
    const auto found = ProvidersOfRoute(g.ctx, testing::kRealRoute);
    ASSERT_TRUE(found);
    for (const ProviderProduct& pp : *found)
        pairs.emplace_back(pp.provider, pp.product);
    EXPECT_EQ(pairs, (std::vector<std::pair<std::string, std::string>>{
                         {"ChrisTrains", "RailSimulator"}, {"DTG", "Academy"}, {"DTG", "MunichRosenheim"}}));
    EXPECT_TRUE(g.ui.shown.empty());
}

TEST(ProviderUsage, ProvidersWithoutRoutePropertiesOrWithoutPreloadBlock) {
    LocationGame g;
    EXPECT_FALSE(ProvidersOfRoute(g.ctx, "r"));
    EXPECT_EQ(g.ui.texts(), std::vector<std::string>{"There is no RouteProperties.xml file for this route\ntherefore "
                                                     "the route is invalid and can't be used."});
    g.root.write(
        "game/Content/Routes/r/RouteProperties.xml",
        "<cRouteProperties>\r\n<Provider d:type=\"cDeltaString\">Outside</Provider>\r\n<Product>X</Product>\r\n"
        "</cRouteProperties>\r\n");
    const auto none = ProvidersOfRoute(g.ctx, "r");
    ASSERT_TRUE(none);
    EXPECT_TRUE(none->empty());
    EXPECT_EQ(g.ui.shown.size(), 1u);
}

TEST(ProviderUsage, ItemsOfOneProviderIgnoringCase) {
    LocationGame g;
    g.asset("Hartwell/SteamHeritage/Trees/Oak.bin");
    ASSERT_TRUE(g.tile(
        "Content/Routes/r/Scenery/+000000+000000.bin",
        "<Record>\r\n" + Entity("0", "1", "0", "1", Reference("hartwell", "STEAMHERITAGE", "Trees\\Oak.xml")) +
            Entity("0", "1", "0", "1", Reference("Hartwell", "SteamHeritage", "Trees\\Oak.xml")) +
            Entity("0", "1", "0", "1", Reference("Hartwell", "SteamHeritage", "Trees\\Ash.xml")) +
            Entity("0", "1", "0", "1", Reference("Hartwell", "Other", "Trees\\Elm.xml")) +
            Entity("0", "1", "0", "1", Reference("Brackenridge", "SteamHeritage", "Birch.xml")) + "</Record>\r\n"));
    const RouteCheckOutcome out =
        ItemsOfProvider(g.ctx, {"Brill Line", "r", {}}, {"HARTWELL", "steamheritage"}, NoLists());
    ASSERT_FALSE(out.stopped);
    ASSERT_FALSE(out.lists.empty());
    EXPECT_EQ(out.lists[0].heading, "Items Used by Provider");
    const std::string assets = g.game() + "\\Assets\\";
    EXPECT_EQ(FirstColumn(out.lists[0]),
              (std::vector<std::string>{assets + "Hartwell\\SteamHeritage\\Trees\\Ash.bin",
                                        assets + "hartwell\\STEAMHERITAGE\\Trees\\Oak.bin"}));
    EXPECT_EQ(out.lists[0].rows[0][1], "(Scenery Item)");
    // Nothing of the product has geometry here.
    EXPECT_EQ(g.ui.texts(), std::vector<std::string>{"No texture files found, assume there are no\nScenery files from "
                                                     "this Provider."});
}

TEST(ProviderUsage, RowsForARouteWithoutLooseSceneryOrWithoutItems) {
    struct Case {
        const char* name;
        bool sceneryFolder;
        bool tile;
        std::string row;
    };
    const Case cases[] = {
        {"no Scenery folder", false, false, "No Scenary folder found - Route must be in .ap folder"},
        {"empty Scenery folder", true, false, "No Scenary found - Route must be in .ap folder"},
        {"nothing of the product", true, true, "No shapes used by this provider/product"},
    };
    for (const Case& k : cases) {
        LocationGame g;
        if (k.sceneryFolder) fs::create_directories(g.root.path() / "game/Content/Routes/r/Scenery");
        if (k.tile) {
            ASSERT_TRUE(
                g.tile("Content/Routes/r/Scenery/+000000+000000.bin",
                       "<Record>\r\n" + Entity("0", "1", "0", "1", Reference("A", "B", "c.xml")) + "</Record>\r\n"));
        }
        const RouteCheckOutcome out = ItemsOfProvider(g.ctx, {"Brill Line", "r", {}}, {"P", "Q"}, NoLists());
        ASSERT_FALSE(out.lists.empty()) << k.name;
        EXPECT_EQ(FirstColumn(out.lists[0]), std::vector<std::string>{k.row}) << k.name;
        EXPECT_TRUE(out.uniqueAssets.empty()) << k.name;
    }
}

TEST(ProviderUsage, TheTerrainTexturesCountOnlyForTheTerrainsOwnProduct) {
    struct Case {
        ProviderProduct pp;
        bool terrainTested;
    };
    const Case cases[] = {{{"terra", "GROUND"}, true}, {{"Hartwell", "SteamHeritage"}, false}};
    for (const Case& k : cases) {
        LocationGame g;
        g.root.write("game/Content/Routes/r/RouteProperties.xml", "<cRouteProperties>\r\n<TerrainBlueprint>\r\n" +
                                                                      Reference("Terra", "Ground", "Terrain\\Mix.xml") +
                                                                      "</TerrainBlueprint>\r\n</cRouteProperties>\r\n");
        ASSERT_TRUE(g.tile("Assets/Terra/Ground/Terrain/Mix.bin",
                           "<Record>\r\n<cTerrainBlueprint d:id=\"2\">\r\n<cMixTexDescriptor d:id=\"3\">\r\n"
                           "<BaseTextureName d:type=\"cDeltaString\">Terra\\Ground\\Grass</BaseTextureName>\r\n"
                           "</cMixTexDescriptor>\r\n</cTerrainBlueprint>\r\n</Record>\r\n"));
        const RouteCheckOutcome out = ItemsOfProvider(g.ctx, {"Brill Line", "r", {}}, k.pp, NoLists());
        const std::string grass = g.game() + "\\Assets\\Terra\\Ground\\Grass_A.TgPcDx Called by Texturing.bin";
        EXPECT_EQ(out.missingText.find(grass) != std::string::npos, k.terrainTested) << out.missingText;
    }
}

TEST(ProviderUsage, UsedFilesAreUpperCasedAndRepaired) {
    RouteCheckOutcome items;
    items.uniqueAssets = {"G\\Assets\\P\\Q\\Tree&amp;Bush.bin"};
    items.textures.geometry = {{"G\\Assets\\P\\Q\\tree.GeoPcDx", "x"}};
    items.textures.textures = {"G\\Assets\\P\\Q\\tree.TgPcDx"};
    items.textures.audio = {"G\\Assets\\P\\Q\\Audio\\hum.wav"};
    items.textures.proxies = {"G\\Assets\\P\\Q\\Audio\\hum.proxyxml"};
    const std::vector<std::string> used = UsedFiles(items);
    for (const char* file :
         {"G\\ASSETS\\P\\Q\\TREE&AMP;BUSH.BIN", "G\\ASSETS\\P\\Q\\TREE&BUSH.BIN", "G\\ASSETS\\P\\Q\\TREE.GEOPCDX",
          "G\\ASSETS\\P\\Q\\TREE.TGPCDX", "G\\ASSETS\\P\\Q\\AUDIO\\HUM.WAV", "G\\ASSETS\\P\\Q\\AUDIO\\HUM.PROXYXML"})
        EXPECT_NE(std::find(used.begin(), used.end(), file), used.end()) << file;
}

struct UnusedGame : LocationGame {
    UnusedGame() {
        asset("P/Q/Trees/Oak.bin");
        asset("P/Q/Trees/Ash.bin");
        asset("P/Q/Trees/Textures/oak.TgPcDx");
        asset("P/R/Trees/Elm.bin");
    }
    // The used list names Oak in another case, as a tile may.
    std::vector<std::string> used() const {
        return {tools::UpperCp1252(game() + "\\Assets\\p\\q\\trees\\OAK.bin"),
                tools::UpperCp1252(game() + "\\Assets\\P\\Q\\Trees\\Textures\\oak.TgPcDx")};
    }
};

TEST(ProviderUsage, UnusedFilesWithAndWithoutDel) {
    for (const bool del : {false, true}) {
        UnusedGame g;
        g.ui.answers.push_back(del ? base::Answer::Yes : base::Answer::No);
        const UnusedFiles out = ItemsNotUsed(g.ctx, {"P", "Q"}, g.used());
        ASSERT_FALSE(out.aborted);
        EXPECT_EQ(out.withDel, del);
        const std::string ash = g.game() + "\\Assets\\P\\Q\\Trees\\Ash.bin";
        EXPECT_EQ(FirstColumn(out.listing), std::vector<std::string>{del ? "DEL " + ash : ash});
        ASSERT_EQ(g.ui.shown.size(), 1u);
        EXPECT_TRUE(g.ui.shown[0].question);
        EXPECT_EQ(g.ui.shown[0].text,
                  "Do you wish to add 'DEL ' to each item so that the\nlist can be saved as a batch "
                  "file to enable you to\ndelete unused items (Can be very dangerous in "
                  "\ninexperienced hands.....)");
    }
}

TEST(ProviderUsage, UnusedFilesOfAMissingProductOrAfterAbort) {
    UnusedGame g;
    const UnusedFiles missing = ItemsNotUsed(g.ctx, {"P", "Nowhere"}, {}, false);
    EXPECT_TRUE(missing.listing.rows.empty());
    EXPECT_EQ(g.ui.texts(), std::vector<std::string>{g.game() + "\\Assets\\P\\Nowhere\nis missing."});
    g.ctx.abortFlag = true;
    const UnusedFiles aborted = ItemsNotUsed(g.ctx, {"P", "Q"}, {}, true);
    EXPECT_TRUE(aborted.aborted);
    EXPECT_TRUE(aborted.listing.rows.empty());
}

TEST(ProviderUsage, RealRouteItemsOfChrisTrainsThenTheUnusedFiles) {
    LocationGame g;
    if (!g.copyRealRoute()) GTEST_SKIP() << "the real route is not in " << FERROLUND_TESTDATA << "/routes";
    g.asset("ChrisTrains/RailSimulator/Scenery/StationObjects/PerronNummers/NS Plain Pole.bin");
    g.asset("ChrisTrains/RailSimulator/Scenery/Unused Shed.bin");
    const RouteCheckOutcome out =
        ItemsOfProvider(g.ctx, {"Academy", testing::kRealRoute, {}}, {"christrains", "RAILSIMULATOR"}, NoLists());
    ASSERT_FALSE(out.stopped);
    ASSERT_FALSE(out.lists.empty());
    const std::vector<std::string> items = FirstColumn(out.lists[0]);
    ASSERT_GT(items.size(), 3u);
    for (const std::string& item : items)
        EXPECT_EQ(item.rfind(g.game() + "\\Assets\\ChrisTrains\\RailSimulator\\", 0), 0u) << item;
    EXPECT_TRUE(std::is_sorted(items.begin(), items.end(), [](const std::string& a, const std::string& b) {
        return tools::UpperCp1252(a) < tools::UpperCp1252(b);
    }));
    for (const std::string& text : g.ui.texts()) EXPECT_EQ(text.find("Error"), std::string::npos) << text;
    const UnusedFiles unused = ItemsNotUsed(g.ctx, {"ChrisTrains", "RailSimulator"}, UsedFiles(out), true);
    EXPECT_EQ(
        FirstColumn(unused.listing),
        std::vector<std::string>{"DEL " + g.game() + "\\Assets\\ChrisTrains\\RailSimulator\\Scenery\\Unused Shed.bin"});
}

}  // namespace
}  // namespace ferrolund::routes
