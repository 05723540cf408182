// Case-blind path resolution on a generated tree of 100,000 files: 100,000 look-ups,
// half of existing files written in another case, half of paths that do not exist.
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <random>
#include <string>
#include <unistd.h>
#include <vector>

#include "bench.h"
#include "tools/codepage.h"
#include "tools/host_path.h"

namespace {

using Clock = std::chrono::steady_clock;

double Seconds(Clock::time_point since) { return std::chrono::duration<double>(Clock::now() - since).count(); }

}  // namespace

FERROLUND_BENCH(host_path) {
    namespace fs = std::filesystem;
    const fs::path root = fs::temp_directory_path() / ("ferrolund-path-bench-" + std::to_string(::getpid()));
    auto start = Clock::now();
    // Assets\ProviderN\Prod\xFCctN\Folder N\FileN.bin: 10 x 10 x 10 folders of 100 files.
    std::vector<std::string> existing;
    for (int p = 0; p < 10; ++p) {
        for (int q = 0; q < 10; ++q) {
            for (int f = 0; f < 10; ++f) {
                const std::string folder = "Assets\\Provider" + std::to_string(p) + "\\Prod\xFC" "ct" + std::to_string(q) +
                                           "\\Folder " + std::to_string(f);
                const fs::path host = root / ferrolund::tools::Utf8FromCp1252(
                                                 "Assets/Provider" + std::to_string(p) + "/Prod\xFC" "ct" +
                                                 std::to_string(q) + "/Folder " + std::to_string(f));
                fs::create_directories(host);
                for (int n = 0; n < 100; ++n) {
                    const std::string name = "Wagon" + std::to_string(n) + ".Bin";
                    if (std::FILE* out = std::fopen((host / name).c_str(), "w")) std::fclose(out);
                    existing.push_back(folder + "\\" + name);
                }
            }
        }
    }
    std::printf("tree of %zu files made in %.2f s\n", existing.size(), Seconds(start));

    std::mt19937 rng(1);
    const std::string base = root.string();
    std::vector<std::string> lookups;
    for (int i = 0; i < 100000; ++i) {
        std::string path = existing[rng() % existing.size()];
        if (i % 2 == 0) {
            path = ferrolund::tools::UpperCp1252(path);  // an existing file in another case
        } else if (i % 4 == 1) {
            path += ".missing";  // a missing file in an existing folder
        } else {
            path.insert(path.find('\\', 7), "Gone");  // a missing folder
        }
        lookups.push_back(base + "\\" + path);
    }

    for (const char* pass : {"first, listing the folders", "second, folders remembered"}) {
        start = Clock::now();
        for (const auto& path : lookups) ferrolund::tools::HostPath(path);
        const double seconds = Seconds(start);
        std::printf("%zu look-ups, %s: %.3f s (%.2f us each)\n", lookups.size(), pass, seconds,
                    seconds * 1e6 / lookups.size());
    }
    start = Clock::now();
    std::size_t found = 0;
    for (const auto& path : lookups) found += fs::exists(ferrolund::tools::HostPath(path)) ? 1 : 0;
    std::printf("the same with a test that the file exists: %.3f s, %zu of %zu found\n", Seconds(start), found,
                lookups.size());
    ferrolund::tools::ForgetPath(base);
    std::error_code ec;
    fs::remove_all(root, ec);
}
