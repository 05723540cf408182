// What an installed program's start pays for keeping AppRoot seeded: the first start copies
// the shipped data, every later start compares it with AppRoot's copy. The shipped data is
// the one the build put beside this program.
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <unistd.h>

#include "app/app_root.h"
#include "bench.h"

FERROLUND_BENCH(app_root_seed) {
    namespace fs = std::filesystem;
    using Clock = std::chrono::steady_clock;
    const fs::path programFolder = ferrolund::app::ProgramFolder();
    // The build's output folder holds the shipped data and more; seed from its two folders.
    const fs::path shipped = fs::temp_directory_path() / ("ferrolund-seed-bench-" + std::to_string(::getpid()));
    const fs::path appRoot = shipped.string() + "-app";
    std::error_code ec;
    std::size_t files = 0;
    fs::create_directories(shipped, ec);
    for (const char* folder : {"Language", "Templates"}) {
        fs::copy(programFolder / folder, shipped / folder, fs::copy_options::recursive, ec);
        for (auto it = fs::recursive_directory_iterator(shipped / folder, ec); !ec && it != fs::recursive_directory_iterator();
             it.increment(ec)) {
            files += it->is_regular_file() ? 1 : 0;
        }
    }
    if (files == 0) {
        std::printf("app_root_seed: no shipped data beside %s\n", programFolder.c_str());
        return;
    }
    auto start = Clock::now();
    const auto firstProblems = ferrolund::app::SeedAppRoot(shipped, appRoot);
    const double first = std::chrono::duration<double, std::milli>(Clock::now() - start).count();
    constexpr int kRounds = 50;
    start = Clock::now();
    std::size_t problems = firstProblems.size();
    for (int i = 0; i < kRounds; ++i) problems += ferrolund::app::SeedAppRoot(shipped, appRoot).size();
    const double again = std::chrono::duration<double, std::milli>(Clock::now() - start).count() / kRounds;
    std::printf("AppRoot seeding, %zu shipped files: first start %.2f ms, each later start %.2f ms (%zu problems)\n",
                files, first, again, problems);
    fs::remove_all(shipped, ec);
    fs::remove_all(appRoot, ec);
}
