#include "routes/route_check.h"

#include <gtest/gtest.h>

#include "assets/blueprint_files.h"

#include <algorithm>
#include <filesystem>
#include <set>

#include "core/sample/sample_fixture.h"
#include "routes/route_check_command.h"
#include "support/scripted_ui.h"
#include "core/routes/location_test_support.h"
#include "support/temp_folder.h"
#include "tools/codepage.h"
#include "tools/host_path.h"
#include "tools/serz_convert.h"

namespace ferrolund::routes {
namespace {

namespace fs = std::filesystem;

constexpr const char* kValleyRoute = "3f6a2c1e-7b4d-4e8a-9c21-5d0e8b7a4f10";

// Five lines of a reference as the converter writes them.
std::string Ref(const std::string& provider, const std::string& product, const std::string& blueprintId) {
    return "\t\t\t<Provider d:type=\"cDeltaString\">" + provider + "</Provider>\r\n" +
           "\t\t\t<Product d:type=\"cDeltaString\">" + product + "</Product>\r\n" +
           "\t\t</iBlueprintLibrary-cBlueprintSetID>\r\n\t</BlueprintSetID>\r\n" +
           "\t<BlueprintID d:type=\"cDeltaString\">" + blueprintId + "</BlueprintID>\r\n";
}

struct Checker {
    testing::TempFolder app;
    testing::ScriptedUi ui;
    app::AppContext ctx;
    CheckRun run;
    TileFolder folder{"", "(Scenery Item)", "Scenery\\", "Scenery "};
    explicit Checker(const std::string& gameRoot) {
        ctx.appRoot = app.system();
        ctx.prefs.gameRoot = gameRoot;
        ctx.ui = &ui;
    }
    void scan(const std::string& xml, const WalkRule& rule = {}) { ScanTileText(ctx, xml, "+000001+000002.bin", folder, rule, run); }
    std::vector<std::string> missingPaths() const {
        std::vector<std::string> paths;
        for (const auto& row : run.missingRows) paths.push_back(row[0]);
        return paths;
    }
};

struct LooseGame {
    testing::TempFolder root;
    std::string game() const { return root.system() + "/game"; }
    void asset(const std::string& relative) { root.write("game/Assets/" + relative, "x"); }
};

TEST(RouteCheckTile, DecidesMissingCaseBlindAndAfterRepair) {
    LooseGame game;
    game.asset("hartwell/steamheritage/trees/OAK.BIN");
    game.asset("Brackenridge/CountryScenery/Scenery/Tree&Bush.bin");
    Checker c(game.game());
    c.scan(Ref("Hartwell", "SteamHeritage", "Trees\\Oak.xml") +
           Ref("Brackenridge", "CountryScenery", "Scenery\\Tree&amp;Bush.xml") +
           Ref("Brackenridge", "CountryScenery", "Scenery\\Gone.xml"));
    const std::string root = game.game() + "\\Assets\\Brackenridge\\CountryScenery\\";
    EXPECT_EQ(c.missingPaths(), std::vector<std::string>{root + "Scenery\\Gone.bin"});
    ASSERT_EQ(c.run.missingRows.size(), 1u);
    EXPECT_EQ(c.run.missingRows[0][1], "(Scenery Item) on tile +000001+000002.bin");
    EXPECT_EQ(c.run.usedAssets.size(), 3u);
    EXPECT_TRUE(c.run.missingFound);
}

TEST(RouteCheckTile, SkipsBlankReferencesAndFiltersByProduct) {
    LooseGame game;
    Checker c(game.game());
    c.scan(Ref("", "X", "a.xml") + Ref(" ", "X", "b.xml") + Ref("P", "Q", "") + Ref("P", "Q", "c.xml") +
           Ref("p", "q", "d.xml") + Ref("P", "R", "e.xml"),
           WalkRule{"P", "Q"});
    ASSERT_EQ(c.run.usedAssets.size(), 2u);
    EXPECT_TRUE(c.run.usedAssets[0].ends_with("\\P\\Q\\c.bin"));
    EXPECT_TRUE(c.run.usedAssets[1].ends_with("\\p\\q\\d.bin"));
    EXPECT_TRUE(c.ui.shown.empty());
}

TEST(RouteCheckTile, BrokenProviderOrProductLineEndsTheTileWithTheBox) {
    struct Case {
        std::string xml;
        std::string expected;
    };
    const Case cases[] = {
        {"<Provider d:type=\"cDeltaString\">Brackenridge\r\n" + Ref("P", "Q", "a.xml"),
         "There is an error in a Provider description in tile\n+000001+000002.bin - <Provider "
         "d:type=\"cDeltaString\">Brackenridge\nThis may/may not cause TS-Classic to fail."},
        {"<Provider d:type=\"cDeltaString\">P</Provider>\r\n<Product>Q\r\n" + Ref("P", "Q", "a.xml"),
         "There is an error in a Product description in tile\n+000001+000002.bin - <Product>Q\nThis may/may not "
         "cause TS-Classic to fail."},
    };
    for (const Case& k : cases) {
        LooseGame game;
        Checker c(game.game());
        c.scan(k.xml);
        EXPECT_TRUE(c.run.usedAssets.empty());
        ASSERT_EQ(c.ui.texts(), std::vector<std::string>{k.expected});
    }
}

TEST(RouteCheckTile, TruncatedReferenceAtTheEndIsIgnored) {
    LooseGame game;
    Checker c(game.game());
    c.scan("<Provider>P</Provider>\r\n<Product>Q</Product>\r\n</x>\r\n");
    EXPECT_TRUE(c.run.usedAssets.empty());
    EXPECT_TRUE(c.ui.shown.empty());
}

TEST(RouteCheckHelpers, AssetPathAndSortUnique) {
    EXPECT_EQ(AssetPath("G", "P", "Q", "a\\b.xml"), "G\\Assets\\P\\Q\\a\\b.bin");
    EXPECT_EQ(AssetPath("G", "P", "Q", "a\\b.XML"), "G\\Assets\\P\\Q\\a\\b.bin");
    EXPECT_EQ(SortUnique({"b", "A", "", "a", "B", "c"}), (std::vector<std::string>{"A", "b", "c"}));
    EXPECT_TRUE(SortUnique({}).empty());
}

TEST(RouteCheckTextures, SeasonalSuffixesByKind) {
    EXPECT_EQ(SeasonalSuffixes("00"), std::vector<std::string>{""});
    EXPECT_EQ(SeasonalSuffixes("08"), (std::vector<std::string>{"", "_WI"}));
    EXPECT_EQ(SeasonalSuffixes("09"), (std::vector<std::string>{"", "_SP", "_WI"}));
    EXPECT_EQ(SeasonalSuffixes("0C"), (std::vector<std::string>{"", "_AU", "_WI"}));
    EXPECT_EQ(SeasonalSuffixes("0d"), (std::vector<std::string>{"", "_SP", "_AU", "_WI"}));
    EXPECT_EQ(SeasonalSuffixes("ff"), std::vector<std::string>{""});
}

TEST(RouteCheckTextures, KindsOfTheTextureEntries) {
    const std::string xml =
        "<TextureByName>\r\n<e d:type=\"cDeltaString\">[09]body</e>\r\n<e d:type=\"cDeltaString\">roof</e>\r\n"
        "<e d:type=\"cDeltaString\">..\\..\\Shared\\[0d]glass</e>\r\n</TextureByName>\r\n<d:blob>\r\n"
        "<TextureByName>\r\n<e>[08]late</e>\r\n";
    std::vector<std::string> kinds, files;
    for (const auto& entry : assets::TextureEntries(xml, "G\\A\\B\\", "G\\A\\B\\g.GeoPcDx", true)) {
        kinds.push_back(entry.kind);
        files.push_back(entry.file);
    }
    EXPECT_EQ(kinds, (std::vector<std::string>{"09", "00", "0d"}));
    EXPECT_EQ(files, (std::vector<std::string>{"G\\A\\B\\body.TgPcDx", "G\\A\\B\\roof.TgPcDx", "G\\Shared\\glass.TgPcDx"}));
}

// The sample's route "Ostvale Valley" against its manifest.
struct SampleCheck : ::testing::Test {
    void SetUp() override {
        try {
            sample::SampleMade();
        } catch (const std::exception& e) {
            GTEST_FAIL() << e.what();
        }
    }
};

std::string AssetsPart(const std::string& path) {
    const std::size_t at = tools::LowerCp1252(path).find("\\assets\\");
    return at == std::string::npos ? path : tools::LowerCp1252(path.substr(at + 1));
}

TEST_F(SampleCheck, ReportsExactlyTheManifestsMissingReferencesOfTheRoute) {
    const std::string game = sample::SampleRoot().string();
    Checker c(game);
    std::vector<std::string> scenarios;
    for (const auto& line : sample::ManifestLines(sample::SampleRoot()))
        if (line.fields[0] == "scenario" && line.fields[1] == kValleyRoute) scenarios.push_back(line.fields[2]);
    CheckAnswers answers;
    answers.listShapes = true;
    answers.checkTextures = false;
    const RouteCheckOutcome out = CheckSelectedRoute(c.ctx, {"Ostvale Valley", kValleyRoute, scenarios}, answers);
    ASSERT_FALSE(out.stopped);

    std::set<std::string> reported, used;
    for (const auto& row : out.run.missingRows) reported.insert(AssetsPart(row[0]));
    for (const auto& asset : out.uniqueAssets) used.insert(AssetsPart(asset));
    std::set<std::string> absent, caseOnly, ofRoute;
    for (const auto& line : sample::ManifestLines(sample::SampleRoot())) {
        if (line.fields[0] != "reference") continue;
        std::string path = "Assets\\" + line.fields[2] + "\\" + line.fields[3] + "\\" + line.fields[4];
        path = tools::LowerCp1252(path.substr(0, path.size() - 3) + "bin");
        const std::string& state = line.fields[1];
        if (state == "missing" || state == "archived") absent.insert(path);
        if (state == "case") caseOnly.insert(path);
        const std::string& usedBy = line.fields[5];
        if (usedBy.find(kValleyRoute) != std::string::npos && usedBy.find("(in an archive)") == std::string::npos &&
            (usedBy.find("\\Scenery\\") != std::string::npos || usedBy.find("\\Networks\\") != std::string::npos))
            ofRoute.insert(path);
    }
    ASSERT_FALSE(reported.empty());
    for (const std::string& path : reported) EXPECT_TRUE(absent.count(path)) << path << " reported missing";
    for (const std::string& path : ofRoute) {
        EXPECT_TRUE(used.count(path)) << path << " not found in the route";
        EXPECT_EQ(reported.count(path), absent.count(path)) << path;
    }
    bool someCaseOnly = false;
    for (const std::string& path : caseOnly)
        if (used.count(path)) {
            someCaseOnly = true;
            EXPECT_FALSE(reported.count(path)) << path << " differs only in case";
        }
    EXPECT_TRUE(someCaseOnly) << "the sample route names no asset in another letter case";
    ASSERT_FALSE(out.lists.empty());
    EXPECT_EQ(out.lists[0].heading, "Following Asset(s) were missing from this route:-");
    EXPECT_EQ(out.lists.back().suffix, "_Assets.csv");
    EXPECT_EQ(out.lists.back().rows.size(), out.uniqueAssets.size());
}

TEST_F(SampleCheck, KeepsTheXmlOfTilesFromTheFirstMissOn) {
    const std::string game = sample::SampleRoot().string();
    Checker c(game);
    c.folder.folder = game + "\\Content\\Routes\\" + kValleyRoute + "\\Scenery";
    const std::vector<std::string> tiles = ListTiles(c.ctx, c.folder.folder);
    ASSERT_GT(tiles.size(), 2u);
    CheckForFiles(c.ctx, c.folder, {}, c.run);
    ASSERT_TRUE(c.run.missingFound);
    const std::string firstMissTile = c.run.missingRows[0][1].substr(c.run.missingRows[0][1].rfind(' ') + 1);
    bool afterMiss = false;
    for (const std::string& tile : tiles) {
        afterMiss = afterMiss || tile == firstMissTile;
        const fs::path xml = c.app.path() / "TempFiles" / "Scenery" / (tile.substr(0, tile.size() - 3) + "xml");
        EXPECT_EQ(fs::exists(xml), afterMiss) << tile;
    }
}

TEST_F(SampleCheck, TransferPointsAddTheContainersContents) {
    const std::string game = sample::SampleRoot().string();
    Checker c(game);
    getTransfer(c.ctx, game + "\\Assets\\Brackenridge\\CountryScenery\\Scenery\\TransferPoints\\CoalStaithe.bin",
                "(Scenery Item)", "(Scenery Item) on tile t.bin", c.run);
    ASSERT_EQ(c.run.usedAssets.size(), 2u);
    EXPECT_TRUE(c.run.usedAssets[0].ends_with("\\Scenery\\Industry\\Hopper.bin"));
    EXPECT_TRUE(c.run.usedAssets[1].ends_with("\\Scenery\\Industry\\CoalHeap.bin"));
    const std::vector<std::string> missing = c.missingPaths();
    for (const std::string& path : c.run.usedAssets) {
        const bool onDisk = fs::exists(ferrolund::tools::HostPath(path));
        EXPECT_EQ(std::count(missing.begin(), missing.end(), path), onDisk ? 0 : 1) << path;
    }
}

TEST_F(SampleCheck, AbortStopsBeforeTheNextTile) {
    struct AbortingUi : testing::ScriptedUi {
        app::AppContext* ctx = nullptr;
        void pump() override { ctx->abortFlag = true; }
    } ui;
    const std::string game = sample::SampleRoot().string();
    Checker c(game);
    ui.ctx = &c.ctx;
    c.ctx.ui = &ui;
    c.folder.folder = game + "\\Content\\Routes\\" + kValleyRoute + "\\Scenery";
    CheckForFiles(c.ctx, c.folder, {}, c.run);
    EXPECT_TRUE(c.run.aborted);
    EXPECT_EQ(c.run.tilesRead, 0u);
}

TEST(RouteCheckCommand, PackedRouteQuestionNoStopsAndMissingArchiveIsTold) {
    LooseGame game;
    game.root.write("game/Content/Routes/r1/RouteProperties.xml", "<x/>");
    Checker c(game.game());
    c.ui.answers = {base::Answer::No};
    RouteCheckOutcome out = CheckSelectedRoute(c.ctx, {"R", "r1", {}});
    EXPECT_TRUE(out.stopped);
    ASSERT_EQ(c.ui.shown.size(), 1u);
    EXPECT_TRUE(c.ui.shown[0].text.starts_with("The 'Scenery' folder for this route is empty, or missing,\n"));

    c.ui.answers = {base::Answer::Yes};
    out = CheckSelectedRoute(c.ctx, {"R", "r1", {}});
    EXPECT_FALSE(out.unpacked);
    EXPECT_EQ(c.ui.texts().back(),
              "There is no maincontent.ap file associated with this\nroute, so looks like a faulty route installation?");
}

TEST(RouteCheckCommand, MissingRouteTemplateStopsTheCheck) {
    LooseGame game;
    game.root.write("game/Content/Routes/r1/Scenery/+000000+000000.bin", "x");
    game.root.write("game/Content/Routes/r1/RouteProperties.xml",
                    "<InfrastructureModified>\r\n<Provider>P</Provider>\r\n<Product>Q</Product>\r\n"
                    "<BlueprintID>Templates\\T&amp;1.xml</BlueprintID>\r\n");
    Checker c(game.game());
    const RouteCheckOutcome out = CheckSelectedRoute(c.ctx, {"R", "r1", {}});
    EXPECT_TRUE(out.stopped);
    EXPECT_EQ(c.ui.texts(), std::vector<std::string>{"Templates\\T&1.xml\nThe Route Template listed in "
                                                     "RouteProperties.xml\nCould not be found"});
}

TEST_F(SampleCheck, PackedRouteIsUnpackedIntoTheWorkingFolderAndIndexed) {
    const std::string packed = "d7e2b6a0-51c9-4f8d-a6e3-0b4c8f2917de";
    LooseGame game;
    fs::create_directories(game.root.path() / "game/Content/Routes" / packed);
    fs::copy_file(sample::SampleRoot() / "Content/Routes" / packed / "MainContent.ap",
                  game.root.path() / "game/Content/Routes" / packed / "MainContent.ap");
    Checker c(game.game());
    c.ui.answers = {base::Answer::Yes};
    const RouteCheckOutcome out = CheckSelectedRoute(c.ctx, {"Packed", packed, {}});
    EXPECT_TRUE(out.unpacked);
    EXPECT_TRUE(fs::exists(game.root.path() / "game/Content/Routes" / kUnpackFolder / "RouteProperties.xml"));
    EXPECT_EQ(c.ui.texts().back(), "Route now copied to '0000000F-0000-0000-0000-00000000FFFF'\nNow run 'Check Route' "
                                   "on this folder and you can check");
    bool indexed = false;
    for (const std::string& folder : c.ctx.routeIndex.routeFolder) indexed = indexed || folder == kUnpackFolder;
    EXPECT_TRUE(indexed);
}

}  // namespace
}  // namespace ferrolund::routes

namespace ferrolund::routes {
namespace {

// Every BlueprintID element with a value whose nearest Provider before it is not blank:
// the references of a tile, found without the walker's line rule.
std::set<std::string> ReferencesByElement(const std::string& game, const std::string& xml) {
    std::set<std::string> found;
    const auto value = [&](std::size_t tagAt) {
        const std::size_t open = xml.find('>', tagAt);
        const std::size_t close = xml.find('<', open);
        return xml.substr(open + 1, close - open - 1);
    };
    for (std::size_t at = xml.find("<BlueprintID"); at != std::string::npos; at = xml.find("<BlueprintID", at + 1)) {
        const std::string id = value(at);
        const std::size_t product = xml.rfind("<Product", at);
        const std::size_t provider = xml.rfind("<Provider", at);
        if (id.empty() || id.find('\n') != std::string::npos || provider == std::string::npos || product == std::string::npos) continue;
        const std::string p = value(provider);
        if (p.empty() || p == " ") continue;
        found.insert(tools::LowerCp1252(AssetPath(game, p, value(product), id)));
    }
    return found;
}

TEST(RouteCheckRealRoute, YieldsEveryReferenceOfItsTilesUnderAnEmptyAssets) {
    testing::TempFolder root;
    if (!testing::PlaceRealRoute(root.path() / "game")) GTEST_SKIP() << "the real route is not in " << FERROLUND_TESTDATA;
    const fs::path route = root.path() / "game/Content/Routes" / testing::kRealRoute;
    const std::string game = root.system() + "/game";
    Checker c(game);
    const std::vector<std::string> scenarios = testing::RealRouteScenarios(root.path() / "game");
    std::set<std::string> expected;
    std::size_t tiles = 0;
    for (const TileFolder& folder : RouteTileFolders(game, "ff1ebaa8-82f5-43ca-9816-859956f4d56c", scenarios)) {
        CheckForFiles(c.ctx, folder, {}, c.run);
        for (const std::string& tile : ListTiles(c.ctx, folder.folder)) {
            std::string xml;
            ASSERT_FALSE(tools::SerzReadXml(c.ctx, folder.folder + "\\" + tile, xml)) << tile;
            expected.merge(ReferencesByElement(game, xml));
            ++tiles;
        }
    }
    std::set<std::string> used, missing;
    for (const std::string& path : c.run.usedAssets) used.insert(tools::LowerCp1252(path));
    for (const auto& row : c.run.missingRows) missing.insert(tools::LowerCp1252(row[0]));
    EXPECT_EQ(c.run.tilesRead, tiles);
    ASSERT_FALSE(expected.empty());
    EXPECT_EQ(used, expected);
    EXPECT_EQ(missing, expected);
}

}  // namespace
}  // namespace ferrolund::routes
