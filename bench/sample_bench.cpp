// Time of the sample installation: the default one (best of five) and the large one that
// benchmarks of other areas use (10,000 scenery tiles, 50,000 generated blueprints). Wall
// time and the process's CPU time are both shown: on a busy disk most of the wall time is
// the file system's.
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <string>

#include "bench.h"
#include "generator/make_sample.h"

namespace {

namespace fs = std::filesystem;

void Run(const char* label, const ferrolund::sample::SampleOptions& options, int runs) {
    const fs::path folder = fs::temp_directory_path() / ("ferrolund-sample-bench-" + std::to_string(::getpid()));
    double bestWall = 1e30, bestCpu = 1e30;
    ferrolund::sample::SampleResult result;
    for (int i = 0; i < runs; ++i) {
        std::error_code error;
        fs::remove_all(folder, error);
        result = {};
        const auto start = std::chrono::steady_clock::now();
        const std::clock_t cpuStart = std::clock();
        if (auto failure = ferrolund::sample::MakeSample(folder, options, result)) {
            std::printf("%-24s failed: %s\n", label, failure->c_str());
            return;
        }
        bestCpu = std::min(bestCpu, static_cast<double>(std::clock() - cpuStart) / CLOCKS_PER_SEC);
        bestWall = std::min(bestWall, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    std::error_code error;
    fs::remove_all(folder, error);
    std::printf("%-24s %7zu files %9.1f MB   wall %8.2f s   cpu %8.2f s   %9.0f files/s\n", label, result.files,
                static_cast<double>(result.bytes) / 1e6, bestWall, bestCpu,
                static_cast<double>(result.files) / bestWall);
}

}  // namespace

FERROLUND_BENCH(sample) {
    Run("default sample", {}, 5);
}

FERROLUND_BENCH(sample_large) {
    ferrolund::sample::SampleOptions options;
    options.tiles = 10000;
    options.assets = 50000;
    Run("10000 tiles, 50000 assets", options, 1);
}
