// The check with its tiles decoded in worker threads against the check that reads each
// tile's XML text one by one: every output the same, byte for byte, on the sample, on
// hand-made tiles with a miss in the middle, a truncated tile, a broken provider line and
// an abort, and on the real route.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "core/sample/sample_fixture.h"
#include "routes/route_check.h"
#include "routes/route_check_command.h"
#include "serz/codec.h"
#include "support/scripted_ui.h"
#include "core/routes/location_test_support.h"
#include "support/temp_folder.h"
#include "tile_xml.h"
#include "tools/files.h"
#include "tools/host_path.h"

namespace ferrolund::routes {
namespace {

namespace fs = std::filesystem;
using testing_tiles::BlueprintRef;

// The walk reading each tile as XML text, one by one, keeping its XML from the first
// miss on: the check as it was before its tiles were decoded in worker threads.
void CheckAsText(app::AppContext& ctx, const TileFolder& folder, const WalkRule& rule, CheckRun& run) {
    if (!fs::is_directory(tools::HostPath(folder.folder))) return;
    const std::string tempFolder = ctx.appPath("TempFiles\\" + folder.tempSub);
    run.aborted = WalkTiles(ctx, folder, ListTiles(ctx, folder.folder),
                            [&](const std::string& tile, const std::string& xml) {
                                ScanTileText(ctx, xml, tile, folder, rule, run);
                                ++run.tilesRead;
                                if (!run.missingFound) return;
                                tools::CreatePath(tempFolder);
                                tools::WriteTextFile(ctx, tempFolder + tile.substr(0, tile.rfind('.') + 1) + "xml", xml);
                            }) ||
                  run.aborted;
}

// Sets AbortFlag when the progress bar reaches `percent`.
struct AbortingUi : testing::ScriptedUi {
    app::AppContext* ctx = nullptr;
    int percent = 101;
    void progress(int value, const std::string& caption) override {
        ScriptedUi::progress(value, caption);
        if (value >= percent) ctx->abortFlag = true;
    }
};

struct Observed {
    CheckRun run;
    std::vector<std::string> shown;
    std::vector<std::pair<int, std::string>> progress;
    std::map<std::string, std::string> files;  // below the program's folder, but the error log
};

Observed Observe(const std::string& game, const std::vector<TileFolder>& folders, bool asText, int abortAt = 101,
                 const WalkRule& rule = {}) {
    testing::TempFolder app;
    AbortingUi ui;
    app::AppContext ctx;
    ctx.appRoot = app.system();
    ctx.prefs.gameRoot = game;
    ctx.ui = &ui;
    ui.ctx = &ctx;
    ui.percent = abortAt;
    Observed seen;
    for (const TileFolder& folder : folders) {
        (asText ? CheckAsText : CheckForFiles)(ctx, folder, rule, seen.run);
        if (ctx.abortFlag) break;
    }
    std::vector<std::vector<std::string>> used;
    for (const std::string& asset : SortUnique(seen.run.usedAssets)) used.push_back({asset, seen.run.kindOf[asset]});
    SaveListing(ctx, "R", {"", "_Missing.csv", seen.run.missingRows, true});
    SaveListing(ctx, "R", {"", "_Assets.csv", used, false});
    seen.shown = ui.texts();
    seen.progress = ui.progressSteps;
    for (const auto& entry : fs::recursive_directory_iterator(app.path()))
        if (entry.is_regular_file() && entry.path().filename() != "Errors.txt")
            seen.files[fs::relative(entry.path(), app.path()).string()] = tools::ReadTextFile(entry.path().string());
    return seen;
}

void ExpectSameOutputs(const std::string& game, const std::vector<TileFolder>& folders, int abortAt = 101,
                       const WalkRule& rule = {}) {
    const Observed text = Observe(game, folders, true, abortAt, rule);
    const Observed decoded = Observe(game, folders, false, abortAt, rule);
    EXPECT_EQ(decoded.run.usedAssets, text.run.usedAssets);
    EXPECT_EQ(decoded.run.kindOf, text.run.kindOf);
    EXPECT_EQ(decoded.run.missingRows, text.run.missingRows);
    EXPECT_EQ(decoded.run.missingFound, text.run.missingFound);
    EXPECT_EQ(decoded.run.tilesRead, text.run.tilesRead);
    EXPECT_EQ(decoded.run.aborted, text.run.aborted);
    EXPECT_EQ(decoded.run.known, text.run.known);
    EXPECT_EQ(decoded.shown, text.shown);
    EXPECT_EQ(decoded.progress, text.progress);
    ASSERT_EQ(decoded.files.size(), text.files.size());
    for (const auto& [name, bytes] : text.files) {
        const auto other = decoded.files.find(name);
        ASSERT_NE(other, decoded.files.end()) << name;
        EXPECT_TRUE(other->second == bytes) << name << " differs";
    }
}

std::string Binary(const std::vector<BlueprintRef>& refs) {
    std::string binary;
    EXPECT_FALSE(serz::XmlToBinary(testing_tiles::Tile(refs), binary));
    return binary;
}

// Ten scenery tiles and two track tiles: the first miss on the fourth tile, the sixth
// truncated, the seventh with a provider broken over two lines.
struct HandMadeRoute {
    testing::TempFolder root;
    std::string game = root.system() + "/game";
    std::vector<TileFolder> folders;
    HandMadeRoute() {
        const BlueprintRef present{"Hartwell", "SteamHeritage", "Scenery\\Trees\\Birch.xml"};
        const BlueprintRef other{"Hartwell", "SteamHeritage", "Scenery\\Sheds\\Shed&amp;Yard.xml"};
        const BlueprintRef absent{"Hartwell", "SteamHeritage", "Scenery\\Gone.xml"};
        const BlueprintRef blank{"", "", ""};
        root.write("game/Assets/Hartwell/SteamHeritage/Scenery/Trees/Birch.bin", "x");
        root.write("game/Assets/Hartwell/SteamHeritage/Scenery/Sheds/Shed&Yard.bin", "x");
        const std::string route = "game/Content/Routes/r1/";
        for (int t = 0; t < 10; ++t) {
            std::vector<BlueprintRef> refs{present, blank, other};
            if (t == 3 || t == 8) refs.push_back(absent);
            std::string binary = Binary(refs);
            if (t == 5) binary.resize(binary.size() / 2);
            if (t == 6) binary = Binary({present, {"Brack&#10;enridge", "Q", "x.xml"}, other});
            root.write(route + "Scenery/+00000" + std::to_string(t) + "+000000.bin", binary);
        }
        root.write(route + "Networks/Tracks.bin", Binary({present, absent}));
        root.write(route + "Networks/Track Tiles/+000000+000000.bin", Binary({other}));
        folders = RouteTileFolders(game, "r1", {});
    }
};

TEST(RouteCheckParity, HandMadeTilesWithAMissInTheMiddle) {
    HandMadeRoute route;
    ExpectSameOutputs(route.game, route.folders);
    const Observed seen = Observe(route.game, route.folders, false);
    EXPECT_EQ(seen.run.tilesRead, 10u);  // the truncated tile passed over
    EXPECT_TRUE(seen.files.count("TempFiles/Scenery/+000003+000000.xml"));
    EXPECT_FALSE(seen.files.count("TempFiles/Scenery/+000002+000000.xml"));
    EXPECT_FALSE(seen.files.count("TempFiles/Scenery/+000005+000000.xml"));
    EXPECT_TRUE(seen.files.count("TempFiles/Networks/Tracks.xml"));
    ASSERT_EQ(seen.shown.size(), 2u);  // the truncated tile, the broken provider
    EXPECT_NE(seen.shown[0].find("+000005+000000.bin"), std::string::npos);
    EXPECT_EQ(seen.shown[1], "There is an error in a Provider description in tile\n+000006+000000.bin - \t\t\t\t\t\t\t<Provider "
                             "d:type=\"cDeltaString\">Brack\nThis may/may not cause TS-Classic to fail.");
}

TEST(RouteCheckParity, HandMadeTilesAbortedHalfWayAndFiltered) {
    HandMadeRoute route;
    for (int percent : {10, 50, 100}) ExpectSameOutputs(route.game, route.folders, percent);
    const Observed seen = Observe(route.game, route.folders, false, 50);
    EXPECT_TRUE(seen.run.aborted);
    EXPECT_EQ(seen.run.tilesRead, 4u);
    ExpectSameOutputs(route.game, route.folders, 101, WalkRule{"hartwell", "steamheritage"});
}

TEST(RouteCheckParity, TheSampleRouteWithItsScenarios) {
    sample::SampleMade();
    std::vector<std::string> scenarios;
    for (const auto& line : sample::ManifestLines(sample::SampleRoot()))
        if (line.fields[0] == "scenario" && line.fields[1] == "3f6a2c1e-7b4d-4e8a-9c21-5d0e8b7a4f10")
            scenarios.push_back(line.fields[2]);
    const std::string game = sample::SampleRoot().string();
    ExpectSameOutputs(game, RouteTileFolders(game, "3f6a2c1e-7b4d-4e8a-9c21-5d0e8b7a4f10", scenarios));
}

TEST(RouteCheckParity, TheRealRouteUnderAnEmptyAssetsFolder) {
    testing::TempFolder root;
    if (!testing::PlaceRealRoute(root.path() / "game")) GTEST_SKIP() << "the real route is not in " << FERROLUND_TESTDATA;
    const std::string game = root.system() + "/game";
    ExpectSameOutputs(game, RouteTileFolders(game, testing::kRealRoute, testing::RealRouteScenarios(root.path() / "game")));
}

}  // namespace
}  // namespace ferrolund::routes
