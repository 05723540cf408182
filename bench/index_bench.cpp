// The asset index: saving, loading and appending a 50,000-row index.csv, and the entry
// filter of the .ap list over a 100,000-entry archive listing, and rows read straight
// out of an archive of 2,000 blueprints.
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

#include "app/app_context.h"
#include "archives/zip_writer.h"
#include "assets/ap_assets.h"
#include "assets/asset_index.h"
#include "bench.h"
#include "serz/codec.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

double Ms(Clock::time_point since) { return std::chrono::duration<double, std::milli>(Clock::now() - since).count(); }


std::vector<ferrolund::assets::AssetRow> Rows(int count, int first) {
    std::vector<ferrolund::assets::AssetRow> rows;
    rows.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const std::string n = std::to_string(first + i);
        rows.push_back({"Provider" + std::to_string(i % 40), "Product" + std::to_string(i % 7),
                        "RailVehicles\\Diesel\\Class" + n + "\\Engine\\Class" + n + ".bin", "Class " + n + " Diesel",
                        "Yes", "Diesel", "EngineBlueprint", n});
    }
    return rows;
}

}  // namespace

FERROLUND_BENCH(index_file) {
    const fs::path dir = fs::temp_directory_path() / ("ferrolund-bench-index-" + std::to_string(::getpid()));
    fs::create_directories(dir / "IndexFiles");
    ferrolund::app::AppContext ctx;
    ctx.appRoot = dir.string();
    const auto rows = Rows(50000, 1);
    const std::string path = ferrolund::assets::IndexFilePath(ctx);
    std::string backup;

    auto start = Clock::now();
    ferrolund::assets::SaveAssetIndex(path, rows, backup);
    std::printf("save: 50000 rows (%.1f MB) in %.1f ms\n", static_cast<double>(fs::file_size(dir / "IndexFiles/index.csv")) / 1e6,
                Ms(start));
    start = Clock::now();
    ferrolund::assets::SaveAssetIndex(path, rows, backup);
    std::printf("save over an old index, with its back-up: %.1f ms\n", Ms(start));

    start = Clock::now();
    const auto loaded = ferrolund::assets::LoadAssetIndex(path);
    std::printf("load: %zu rows in %.1f ms\n", loaded.rows.size(), Ms(start));
    start = Clock::now();
    auto sorted = loaded.rows;
    ferrolund::assets::SortByProvider(sorted);
    std::printf("sort by provider: %.1f ms\n", Ms(start));
    start = Clock::now();
    const long last = ferrolund::assets::LastRunningNumber(ctx);
    std::printf("last running number (%ld): %.2f ms\n", last, Ms(start));

    start = Clock::now();
    ferrolund::assets::AppendToIndex(ctx, Rows(1000, 50001), backup);
    std::printf("append 1000 rows to it: %.1f ms\n", Ms(start));
    fs::remove_all(dir);
}

FERROLUND_BENCH(ap_entry_filter) {
    std::vector<std::string> names;
    const char* kinds[] = {"Engine\\body.GeoPcDx", "Engine\\Class.bin", "Textures\\body.TgPcDx",
                           "Engine\\Simulation\\Sim.bin", "Passenger\\Coach.bin", "Audio\\Horn.bin"};
    for (int i = 0; i < 100000; ++i)
        names.push_back("RailVehicles\\Diesel\\Set" + std::to_string(i / 60) + "\\" + kinds[i % 6]);
    for (const bool stock : {false, true}) {
        const ferrolund::assets::ApEntryFilter filter{.rollingStockOnly = stock, .mask = "*.bin"};
        std::size_t shown = 0;
        const auto start = Clock::now();
        for (const auto& name : names) shown += ferrolund::assets::ApEntryPasses(name, filter) ? 1 : 0;
        const double ms = Ms(start);
        std::printf("entry filter%s: 100000 entries, %zu shown, in %.1f ms (%.2f us an entry)\n",
                    stock ? " (rolling stock)" : "", shown, ms, ms * 1000 / 100000);
    }
}

FERROLUND_BENCH(ap_entry_rows) {
    // 2,000 engine blueprints in one archive, made into rows straight from the archive.
    const std::string xml =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
        "<cBlueprintLoader xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\">\r\n"
        "\t<Blueprint>\r\n\t\t<cEngineBlueprint>\r\n"
        "\t\t\t<Name d:type=\"cDeltaString\">Class 66</Name>\r\n"
        "\t\t\t<DisplayName>\r\n\t\t\t\t<Localisation-cUserLocalisedString>\r\n"
        "\t\t\t\t\t<English d:type=\"cDeltaString\">Class 66, green</English>\r\n"
        "\t\t\t\t</Localisation-cUserLocalisedString>\r\n\t\t\t</DisplayName>\r\n"
        "\t\t\t<RailVehicleComponent>\r\n\t\t\t\t<cEngineComponentBlueprint>\r\n"
        "\t\t\t\t\t<EngineType d:type=\"cDeltaString\">eDiesel</EngineType>\r\n"
        "\t\t\t\t</cEngineComponentBlueprint>\r\n\t\t\t</RailVehicleComponent>\r\n"
        "\t\t</cEngineBlueprint>\r\n\t</Blueprint>\r\n</cBlueprintLoader>\r\n";
    std::string binary;
    if (const auto failed = ferrolund::serz::XmlToBinary(xml, binary)) {
        std::printf("ap_entry_rows: the blueprint did not compile: %s\n", failed->message.c_str());
        return;
    }
    const fs::path dir = fs::temp_directory_path() / ("ferrolund-bench-aprows-" + std::to_string(::getpid()));
    fs::create_directories(dir / "Assets/P/Q");
    std::ofstream(dir / "blueprint.bin", std::ios::binary) << binary;
    const std::string ap = (dir / "Assets/P/Q/Q.ap").string();
    {
        ferrolund::archives::ZipWriter writer;
        writer.create(ap, {.level = 6});
        for (int i = 0; i < 2000; ++i)
            writer.addFile((dir / "blueprint.bin").string(),
                           "RailVehicles\\Diesel\\Class" + std::to_string(i) + "\\Engine\\Class" + std::to_string(i) + ".bin");
        writer.finish();
    }
    ferrolund::app::AppContext ctx;
    ctx.appRoot = dir.string();
    ferrolund::assets::ApAssetList list;
    list.filter = {.rollingStockOnly = true, .mask = "*.bin"};
    auto start = Clock::now();
    list.chooseArchive(ctx, ap);
    std::printf("open and filter: %zu entries shown in %.1f ms\n", list.entries().size(), Ms(start));
    std::vector<std::size_t> all;
    for (const auto& entry : list.entries()) all.push_back(entry.index);
    std::vector<std::string> problems;
    start = Clock::now();
    const std::size_t added = list.addEntries(ctx, all, problems);
    const double ms = Ms(start);
    std::printf("rows: %zu of %zu blueprints (%zu bytes each) in %.1f ms (%.0f a second)\n", added, all.size(),
                binary.size(), ms, added * 1000.0 / ms);
    fs::remove_all(dir);
}
