// The route check on generated sample installations (made by `ferrolund-cli make-sample`,
// which stands beside this program): the walk over 10,000 realistic scenery tiles of
// about 70 KB whose assets are all installed, and for comparison the same walk reading
// each tile as XML text; "Check Selected Route" over 1,000 tiles and 2,000 distinct
// assets with the texture and sound check. Also the longest gap between two chances for
// "&Abort" to arrive. And the substitution of one scenery item in every tile of a route.
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>

#include "app/app_context.h"
#include "bench.h"
#include "bench_ui.h"
#include "routes/route_check_command.h"
#include "routes/tile_decoder.h"
#include "routes/tile_edit.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

double Seconds(Clock::time_point since) { return std::chrono::duration<double>(Clock::now() - since).count(); }

// Processor time of the whole program (all its threads) so far, in seconds.
double CpuSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_utime.tv_sec + usage.ru_stime.tv_sec + (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

std::string MakerPath() {
    return (fs::read_symlink("/proc/self/exe").parent_path() / "ferrolund-cli").string();
}

// The context of a run: the program's folder below `root`, the game at `game`.
ferrolund::app::AppContext BenchContext(const fs::path& root, const fs::path& game, ferrolund::bench::BenchUi& ui) {
    ferrolund::app::AppContext ctx;
    ctx.appRoot = (root / "app").string();
    fs::create_directories(root / "app");
    ctx.prefs.gameRoot = game.string();
    ctx.ui = &ui;
    return ctx;
}

constexpr const char* kValley = "3f6a2c1e-7b4d-4e8a-9c21-5d0e8b7a4f10";

bool MakeSample(const fs::path& folder, int tiles, int assets, int tileEntities = -1) {
    std::string command = "\"" + MakerPath() + "\" make-sample \"" + folder.string() + "\" --tiles " +
                          std::to_string(tiles) + " --assets " + std::to_string(assets);
    if (tileEntities >= 0) command += " --tile-entities " + std::to_string(tileEntities);
    command += " > /dev/null";
    const auto start = Clock::now();
    const bool made = std::system(command.c_str()) == 0;
    std::printf("sample with %d tiles and %d assets made in %.1f s%s\n", tiles, assets, Seconds(start),
                made ? "" : " -- FAILED (is ferrolund-cli built beside ferrolund-bench?)");
    return made;
}

// 10,000 tiles of 125 scenery items each (about 70 KB, as a busy tile of a real route),
// every asset installed: the hand-made tiles of the sample, which name missing ones, are
// taken out. The check's walk over them, then the walk that reads each tile as XML text.
void RealisticTiles(const fs::path& root) {
    const fs::path game = root / "realistic";
    if (!MakeSample(game, 10000, 200, 125)) return;
    const fs::path scenery = game / "Content" / "Routes" / kValley / "Scenery";
    for (const char* handMade : {"+000000+000000.bin", "-000001+000000.bin"}) fs::remove(scenery / handMade);
    std::uintmax_t bytes = 0;
    std::size_t files = 0;
    for (const auto& entry : fs::directory_iterator(scenery)) {
        bytes += entry.file_size();
        ++files;
    }
    std::printf("%zu tiles of %.1f KB on average\n", files, files ? bytes / 1024.0 / files : 0.0);
    ferrolund::bench::BenchUi ui;
    ferrolund::app::AppContext ctx = BenchContext(root, game, ui);
    const ferrolund::routes::TileFolder folder{scenery.string(), "(Scenery Item)", "Scenery\\", "Scenery "};

    // Processor time is given beside the clock's: on a machine shared with other work the
    // tiles per second are what the processors the check got could do.
    const unsigned workers = ferrolund::routes::TileDecoder::DefaultWorkers();
    ferrolund::routes::CheckRun run;
    auto start = Clock::now();
    double cpu = CpuSeconds();
    ferrolund::routes::CheckForFiles(ctx, folder, {}, run);
    double seconds = Seconds(start);
    cpu = CpuSeconds() - cpu;
    std::printf("check of %zu tiles, decoded in %u threads: %.2f s, %.0f tiles/s, %.0f MB/s; %zu references, "
                "%zu missing rows\n",
                run.tilesRead, workers, seconds, run.tilesRead / seconds, bytes / 1e6 / seconds, run.usedAssets.size(),
                run.missingRows.size());
    std::printf("processor time %.3f ms a tile: %.0f tiles/s when %u processors are free for it\n",
                cpu * 1000 / run.tilesRead, workers * run.tilesRead / cpu, workers);
    std::printf("longest gap between two chances to abort: %.1f ms\n", ui.longestGap * 1000);

    ferrolund::routes::CheckRun text;
    ui.reset();
    start = Clock::now();
    cpu = CpuSeconds();
    ferrolund::routes::WalkTiles(ctx, folder, ferrolund::routes::ListTiles(ctx, folder.folder),
                                 [&](const std::string& tile, const std::string& xml) {
                                     ferrolund::routes::ScanTileText(ctx, xml, tile, folder, {}, text);
                                     ++text.tilesRead;
                                 });
    seconds = Seconds(start);
    cpu = CpuSeconds() - cpu;
    std::printf("the same tiles read as XML text, one by one: %.2f s, %.0f tiles/s, processor time %.3f ms a tile; %s\n",
                seconds, text.tilesRead / seconds, cpu * 1000 / text.tilesRead,
                text.usedAssets == run.usedAssets ? "the same references" : "OTHER REFERENCES");
}

void Run(const fs::path& root, int tiles, int assets, bool textures) {
    const fs::path game = root / ("g" + std::to_string(tiles));
    if (!MakeSample(game, tiles, assets)) return;
    ferrolund::bench::BenchUi ui;
    ferrolund::app::AppContext ctx = BenchContext(root, game, ui);
    ferrolund::routes::CheckAnswers answers;
    answers.checkTextures = textures;
    answers.listShapes = false;
    answers.listTextures = false;
    answers.listAudio = false;
    const auto start = Clock::now();
    const auto out =
        ferrolund::routes::CheckSelectedRoute(ctx, {"Ostvale Valley", kValley, {}}, answers);
    const double seconds = Seconds(start);
    std::printf("check of %zu tiles%s: %.2f s, %.0f tiles/s; %zu references, %zu distinct, %zu missing rows",
                out.run.tilesRead, textures ? " with textures and sounds" : "", seconds, out.run.tilesRead / seconds,
                out.run.usedAssets.size(), out.uniqueAssets.size(), out.run.missingRows.size());
    if (textures)
        std::printf("; %zu geometry files, %zu textures, %zu sound files", out.textures.geometry.size(),
                    out.textures.textures.size(), out.textures.audio.size());
    std::printf("\nlongest gap between two chances to abort: %.1f ms\n", ui.longestGap * 1000);
}

}  // namespace

FERROLUND_BENCH(route_check) {
    const fs::path root = fs::temp_directory_path() / ("ferrolund-route-bench-" + std::to_string(::getpid()));
    RealisticTiles(root);
    Run(root, 1000, 2000, true);
    std::error_code ec;
    fs::remove_all(root, ec);
}

// One used scenery item replaced by another in every tile of a route of 10,000 tiles:
// every tile read, the ones that hold the item converted back, backed up and replaced.
FERROLUND_BENCH(tile_edit) {
    const fs::path root = fs::temp_directory_path() / ("ferrolund-edit-bench-" + std::to_string(::getpid()));
    const fs::path game = root / "g";
    if (MakeSample(game, 10000, 200)) {
        ferrolund::bench::BenchUi ui;
        ferrolund::app::AppContext ctx;
        ctx.appRoot = (root / "app").string();
        fs::create_directories(root / "app");
        ctx.prefs.gameRoot = game.string();
        ctx.ui = &ui;
        const ferrolund::routes::CheckedRoute route{"Ostvale Valley", kValley, {}};
        ferrolund::routes::CheckAnswers answers;
        answers.listShapes = false;
        answers.checkTextures = false;
        const auto checked = ferrolund::routes::CheckSelectedRoute(ctx, route, answers);
        // The scenery item the route uses most.
        std::map<std::string, std::size_t> uses;
        for (const std::string& asset : checked.run.usedAssets) {
            const auto kind = checked.run.kindOf.find(asset);
            if (kind != checked.run.kindOf.end() && kind->second == "(Scenery Item)") ++uses[asset];
        }
        std::optional<ferrolund::routes::GridItem> item;
        const auto most = std::max_element(uses.begin(), uses.end(),
                                           [](const auto& a, const auto& b) { return a.second < b.second; });
        if (most != uses.end()) item = ferrolund::routes::CutGridItem(ctx.gameRoot(), most->first + "\t(Scenery Item)");
        if (!item) {
            std::printf("no scenery item found to substitute -- FAILED\n");
        } else {
            ferrolund::assets::BlueprintRef replacement = item->ref;
            replacement.blueprintId = "Scenery\\Bench\\Replacement.xml";
            const auto folders = ferrolund::routes::KindFolders(ctx.gameRoot(), route, ferrolund::routes::kSceneryKind, false);
            ui.reset();
            const auto start = Clock::now();
            const auto run = ferrolund::routes::EditTiles(ctx, folders, [&](std::string& xml) {
                return ferrolund::routes::SubstituteInTile(xml, item->ref, replacement);
            });
            const double seconds = Seconds(start);
            std::printf("substitution over %zu tiles: %.2f s, %.0f tiles/s; %zu tiles changed with back-ups, %zu failed\n",
                        run.tilesRead, seconds, run.tilesRead / seconds, run.tilesChanged, run.tilesFailed);
            std::printf("longest gap between two chances to abort: %.1f ms\n", ui.longestGap * 1000);
        }
    }
    std::error_code ec;
    fs::remove_all(root, ec);
}
