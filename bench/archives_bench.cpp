// The archives: removing duplicates from 10,000 report rows, listing a 10,000-entry
// archive, and unpacking throughput against a plain copy of the same bytes.
#include <cctype>
#include <chrono>
#include <cstring>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <unistd.h>

#include "app/app_context.h"
#include "archives/extract.h"
#include "archives/report_grid.h"
#include "archives/zip_archive.h"
#include "archives/zip_writer.h"
#include "bench.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

double Seconds(Clock::time_point since) { return std::chrono::duration<double>(Clock::now() - since).count(); }

fs::path Scratch() {
    fs::path p = fs::temp_directory_path() / ("ferrolund-bench-archives-" + std::to_string(::getpid()));
    fs::create_directories(p);
    return p;
}

}  // namespace

FERROLUND_BENCH(report_dedupe) {
    std::mt19937 rng(7);
    std::vector<std::vector<std::string>> rows;
    for (int i = 0; i < 10000; ++i) {
        std::string item = "Provider" + std::to_string(rng() % 8) + "\\Product" + std::to_string(rng() % 5) +
                           "\\Scenery\\Item" + std::to_string(rng() % 150) + ".xml";
        if (rng() % 2) for (char& c : item) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        rows.push_back({item, "(Scenery Item)"});
    }
    ferrolund::archives::ReportGrid grid;
    grid.setRows(rows);
    const auto start = Clock::now();
    grid.removeDuplicates();
    std::printf("report_dedupe: 10000 rows -> %zu rows in %.1f ms\n", grid.rowCount(), Seconds(start) * 1000);
}

FERROLUND_BENCH(archive_listing_and_extraction) {
    const fs::path dir = Scratch();
    // 10,000 small entries for the listing.
    {
        ferrolund::archives::ZipWriter writer;
        const fs::path file = dir / "small.txt";
        std::ofstream(file) << "<cBlueprint>small</cBlueprint>";
        writer.create((dir / "many.ap").string(), {.level = 6});
        for (int i = 0; i < 10000; ++i) {
            writer.addFile(file.string(), "RailVehicles\\Set" + std::to_string(i / 100) + "\\e" + std::to_string(i) + ".bin");
        }
        writer.finish();
    }
    ferrolund::archives::ZipArchive archive;
    auto start = Clock::now();
    archive.open((dir / "many.ap").string());
    std::printf("listing: %zu entries read in %.1f ms\n", archive.entries().size(), Seconds(start) * 1000);

    // 200 MB in 50 files of mixed content for the unpacking.
    constexpr std::size_t kFile = 4u << 20;
    std::mt19937_64 rng(3);
    std::string bytes(kFile, '\0');
    for (std::size_t i = 0; i < kFile; i += 8) {
        const std::uint64_t r = (i / 4096) % 2 ? rng() : 0x2020202020202020ull + (i % 17);
        std::memcpy(&bytes[i], &r, 8);
    }
    fs::create_directories(dir / "src");
    for (int i = 0; i < 50; ++i) std::ofstream(dir / "src" / ("f" + std::to_string(i) + ".bin"), std::ios::binary) << bytes;
    ferrolund::archives::ZipWriter writer;
    start = Clock::now();
    writer.create((dir / "big.ap").string(), {.level = 6});
    for (int i = 0; i < 50; ++i) {
        writer.addFile((dir / "src" / ("f" + std::to_string(i) + ".bin")).string(), "f" + std::to_string(i) + ".bin");
    }
    writer.finish();
    const double mb = 50.0 * kFile / 1e6;
    std::printf("packing: %.0f MB at %.0f MB/s (level 6, to %.0f MB)\n", mb, mb / Seconds(start),
                static_cast<double>(fs::file_size(dir / "big.ap")) / 1e6);
    archive.open((dir / "big.ap").string());
    ferrolund::app::AppContext ctx;
    start = Clock::now();
    ferrolund::archives::ExtractEntries(ctx, archive, ferrolund::archives::AllIndices(archive),
                                        {.target = (dir / "out").string()});
    const double unpack = Seconds(start);
    start = Clock::now();
    fs::copy(dir / "src", dir / "copy");
    const double copy = Seconds(start);
    std::printf("unpacking: %.0f MB/s; plain copy of the same bytes: %.0f MB/s\n", mb / unpack, mb / copy);
    fs::remove_all(dir);
}
