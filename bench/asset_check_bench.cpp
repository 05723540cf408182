// The asset file check on a generated sample installation (made by `ferrolund-cli
// make-sample`, which stands beside this program) of 5,000 generated blueprints: "Check
// Loco for missing files" and "Show Files Used by Locos" over every blueprint, and
// "Where is it used?" for 100 of them against the sample's scenarios and PreLoad folders,
// with the longest gap between two chances for "&Abort" to arrive.
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "app/app_context.h"
#include "assets/blueprint.h"
#include "assets/file_check.h"
#include "assets/where_used.h"
#include "bench.h"
#include "bench_ui.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

double Seconds(Clock::time_point since) { return std::chrono::duration<double>(Clock::now() - since).count(); }

std::vector<ferrolund::assets::AssetRow> Blueprints(const fs::path& game) {
    std::vector<ferrolund::assets::AssetRow> rows;
    for (const auto& entry : fs::recursive_directory_iterator(game / "Assets")) {
        if (!entry.is_regular_file() || entry.path().extension() != ".bin") continue;
        std::string path = entry.path().string();
        std::replace(path.begin(), path.end(), '/', '\\');
        if (const auto ref = ferrolund::assets::SplitAssetPath(path)) {
            ferrolund::assets::AssetRow row;
            row.provider = ref->provider;
            row.product = ref->product;
            row.path = ref->blueprintId;
            rows.push_back(std::move(row));
        }
    }
    std::sort(rows.begin(), rows.end(), [](const auto& a, const auto& b) { return a.path < b.path; });
    return rows;
}

}  // namespace

FERROLUND_BENCH(asset_check) {
    const fs::path root = fs::temp_directory_path() / ("ferrolund-asset-check-bench-" + std::to_string(::getpid()));
    const fs::path game = root / "game";
    const std::string maker = (fs::read_symlink("/proc/self/exe").parent_path() / "ferrolund-cli").string();
    const std::string command = "\"" + maker + "\" make-sample \"" + game.string() + "\" --tiles 10 --assets 5000 > /dev/null";
    if (std::system(command.c_str()) != 0) {
        std::printf("asset check: the sample could not be made (is ferrolund-cli built beside ferrolund-bench?)\n");
        return;
    }
    ferrolund::bench::BenchUi ui;
    ferrolund::app::AppContext ctx;
    ctx.appRoot = (root / "app").string();
    fs::create_directories(root / "app");
    ctx.prefs.gameRoot = game.string();
    ctx.ui = &ui;
    const auto rows = Blueprints(game);

    using ferrolund::assets::RowReport;
    const struct { const char* label; RowReport report; } runs[] = {
        {"Check Loco for missing files", RowReport::MissingFiles},
        {"Show Files Used by Locos", RowReport::LocoFiles},
    };
    for (const auto& run : runs) {
        ui.reset();
        const auto start = Clock::now();
        const auto outcome = ferrolund::assets::CheckRows(ctx, rows, run.report, ferrolund::assets::AssetListRows(ctx, run.report));
        const double seconds = Seconds(start);
        std::printf("%-30s %6zu blueprints %8.2f s %9.0f blueprints/s  %5zu missing  longest abort gap %6.1f ms\n",
                    run.label, outcome.rowsChecked, seconds, static_cast<double>(outcome.rowsChecked) / seconds,
                    outcome.missing.size(), ui.longestGap * 1000);
    }
    const std::vector<ferrolund::assets::AssetRow> some(rows.begin(), rows.begin() + std::min<std::size_t>(100, rows.size()));
    ui.reset();
    const auto start = Clock::now();
    const auto used = ferrolund::assets::WhereIsItUsed(ctx, some);
    std::printf("%-30s %6zu blueprints %8.2f s  %zu scenarios, %zu PreLoad consists read, %zu uses  longest abort gap %6.1f ms\n",
                "Where is it used?", some.size(), Seconds(start), used.scenariosRead, used.consistsRead, used.uses,
                ui.longestGap * 1000);
    std::error_code error;
    fs::remove_all(root, error);
}
