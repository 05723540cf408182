// A folder of 500 generated textures to .dds, as the viewer's folder conversion and
// "tex2dds FOLDER" run it: the whole run, the longest time between two chances to abort
// (the worst wait after a click on "&Abort"), and the wait measured from clicks part-way.
// Bar: an abort is obeyed within 100 ms.
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <vector>

#include "bench.h"
#include "bench_ui.h"
#include "generator/texture_sample.h"
#include "serz/codec.h"
#include "textures/texture_batch.h"

namespace {

using Clock = std::chrono::steady_clock;

struct Ctx : ferrolund::base::RunContext {
    void report(const ferrolund::base::RunError&, const std::string&) override {}
};

double Ms(Clock::time_point from, Clock::time_point to) {
    return std::chrono::duration<double, std::milli>(to - from).count();
}

}  // namespace

FERROLUND_BENCH(texture_folder) {
    namespace fs = std::filesystem;
    using namespace ferrolund;
    constexpr int kTextures = 500;
    const fs::path folder = fs::temp_directory_path() / ("ferrolund-texfolder-" + std::to_string(::getpid()));
    fs::create_directories(folder / "in");
    // Terrain-like 512 x 512 DXT1 tiles with their mip-maps; every 50th a 2048 x 2048 DXT5.
    std::string tile, large;
    if (serz::XmlToBinary(sample::TextureXml("HC_IMAGE_FORMAT_COMPRESSED", 512, 512, 10), tile) ||
        serz::XmlToBinary(sample::TextureXml("HC_IMAGE_FORMAT_COMPRESSED_INTERP_ALPHA", 2048, 2048, 12), large)) {
        std::printf("texture_folder: the generated textures do not convert\n");
        return;
    }
    for (int i = 0; i < kTextures; ++i) {
        char name[32];
        std::snprintf(name, sizeof name, "tile_%03d.TgPcDx", i);
        std::ofstream(folder / "in" / name, std::ios::binary) << (i % 50 == 25 ? large : tile);
    }
    const std::vector<std::string> files = textures::TexturesInFolder((folder / "in").string());

    bench::BenchUi ui;
    Ctx ctx;
    ctx.ui = &ui;
    auto start = Clock::now();
    const textures::BatchSummary all = textures::ConvertTextures(ctx, files, (folder / "out").string(), nullptr);
    const double wholeMs = Ms(start, Clock::now());
    std::printf("texture_folder: %zu textures (%zu converted) in %.0f ms, %.1f ms a texture\n", files.size(),
                all.converted, wholeMs, wholeMs / double(files.size()));
    std::printf("longest gap between two chances to abort: %.1f ms (the worst wait after \"&Abort\")\n",
                ui.longestGap * 1000);

    std::vector<double> waits;
    for (double after : {0.05, 0.2, 0.45, 0.7, 1.1, 1.6}) {
        bench::BenchUi clicking;
        Ctx run;
        run.ui = &clicking;
        clicking.abortAfter(&run.abortFlag, after);
        const textures::BatchSummary stopped =
            textures::ConvertTextures(run, files, (folder / "aborted").string(), nullptr);
        const auto end = Clock::now();
        if (!stopped.aborted) continue;
        // The click counts from the moment it was due: a pump comes only between files.
        const auto due = clicking.started + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(after));
        waits.push_back(Ms(due, end));
        std::printf("abort due after %4.0f ms: stopped after %zu textures, %.1f ms after the click\n", after * 1000,
                    stopped.converted, waits.back());
    }
    if (!waits.empty())
        std::printf("abort latency: worst %.1f ms of %zu clicks (bar 100 ms)\n",
                    *std::max_element(waits.begin(), waits.end()), waits.size());
    fs::remove_all(folder);
}
