// The asset list over a generated installation of about 50,000 blueprints of every kind
// (locos, wagons, coaches, tenders, scenery, lofts, track, PreLoad items, reskins, some
// broken or empty): the whole tree, then rolling stock only; the longest time the abort
// flag went unread, and how long "&Abort" takes to end a walk. The files are in the
// system's cache after being made, so the figures are those of a second scan.
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>

#include "app/app_context.h"
#include "assets/asset_scan.h"
#include "bench.h"
#include "bench_ui.h"
#include "generator/make_sample.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

double Seconds(Clock::time_point since) { return std::chrono::duration<double>(Clock::now() - since).count(); }

void Scan(const char* label, const std::string& assets, bool rollingStock, unsigned workers) {
    ferrolund::app::AppContext ctx;
    ferrolund::bench::BenchUi ui;
    ctx.ui = &ui;
    ferrolund::assets::ScanOptions options;
    options.startFolder = assets;
    options.filter.rollingStockOnly = rollingStock;
    options.workers = workers;
    long batches = 0;
    const auto totals = ferrolund::assets::ScanAssets(ctx, options, [&](std::vector<ferrolund::assets::AssetRow>&) {
        ++batches;
    });
    std::printf("%s, %s: %ld files, %ld read, %ld rows in %ld batches, %zu problems: %.2f s, %.0f files/s; "
                "longest gap between abort checks %.1f ms\n",
                label, workers == 0 ? "one thread per core" : "one reading thread", totals.files, totals.read,
                totals.rows, batches, totals.problems.size(), totals.seconds, totals.files / totals.seconds,
                totals.longestAbortGapSeconds * 1000);
}

void Abort(const std::string& assets, double after) {
    ferrolund::app::AppContext ctx;
    ferrolund::bench::BenchUi ui;
    ui.abortAfter(&ctx.abortFlag, after);
    ctx.ui = &ui;
    ferrolund::assets::ScanOptions options;
    options.startFolder = assets;
    const auto totals = ferrolund::assets::ScanAssets(ctx, options, {});
    std::printf("abort clicked after %.2f s: the walk ended %.1f ms later with %ld rows kept%s\n", after,
                std::chrono::duration<double>(ferrolund::bench::BenchUi::Clock::now() - ui.clicked).count() * 1000, totals.rows,
                totals.aborted ? "" : " -- NOT ABORTED");
}

}  // namespace

FERROLUND_BENCH(asset_index) {
    const fs::path root = fs::temp_directory_path() / ("ferrolund-asset-bench-" + std::to_string(::getpid()));
    ferrolund::sample::SampleOptions sampleOptions;
    sampleOptions.stock = 50000;
    ferrolund::sample::SampleResult made;
    const auto start = Clock::now();
    if (auto failure = ferrolund::sample::MakeSample(root, sampleOptions, made)) {
        std::printf("the sample could not be made: %s\n", failure->c_str());
        return;
    }
    long blueprints = 0;
    for (const auto& entry : fs::recursive_directory_iterator(root / "Assets")) {
        if (entry.is_regular_file() && entry.path().extension() == ".bin") ++blueprints;
    }
    std::printf("installation with %ld .bin files under Assets made in %.1f s\n", blueprints, Seconds(start));
    const std::string assets = (root / "Assets").string();
    Scan("all assets", assets, false, 0);
    Scan("rolling stock only", assets, true, 0);
    Scan("all assets", assets, false, 1);
    Abort(assets, 0.5);
    std::error_code ec;
    fs::remove_all(root, ec);
}
