// The content list and its editor: "Add to List" over a made tree of 20 routes with
// 500 tiles and 3 scenarios each (about 10,000 files), and the editor's open and save of
// a tile of 40,000 records (0.7 MB, 5 MB as XML), with the back-up.
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "app/app_context.h"
#include "assets/content_edit.h"
#include "assets/content_list.h"
#include "bench.h"
#include "bench_ui.h"
#include "tools/serz_convert.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

double Seconds(Clock::time_point since) { return std::chrono::duration<double>(Clock::now() - since).count(); }

void Write(const fs::path& file, const std::string& bytes) {
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
}

std::string Properties(const std::string& root, const std::string& name) {
    return "<" + root + "><DisplayName><Localisation-cUserLocalisedString><English d:type=\"cDeltaString\">" + name +
           "</English></Localisation-cUserLocalisedString></DisplayName></" + root + ">\n";
}

struct Scratch {
    fs::path root = fs::temp_directory_path() / ("ferrolund-content-bench-" + std::to_string(::getpid()));
    ferrolund::bench::BenchUi ui;
    ferrolund::app::AppContext ctx;
    Scratch() {
        fs::remove_all(root);
        fs::create_directories(root / "app");
        ctx.appRoot = (root / "app").string();
        ctx.prefs.gameRoot = (root / "game").string();
        ui.answer = ferrolund::base::Answer::Ok;
        ctx.ui = &ui;
    }
    ~Scratch() { fs::remove_all(root); }
};

}  // namespace

FERROLUND_BENCH(content_list) {
    Scratch s;
    const fs::path routes = s.root / "game/Content/Routes";
    std::size_t files = 0;
    for (int r = 0; r < 20; ++r) {
        const fs::path route = routes / ("route-" + std::to_string(r));
        Write(route / "RouteProperties.xml", Properties("cRouteProperties", "Route " + std::to_string(r)));
        ++files;
        for (int t = 0; t < 500; ++t, ++files) Write(route / "Scenery" / ("+0000" + std::to_string(t) + ".bin"), "x");
        for (int c = 0; c < 3; ++c) {
            const fs::path scenario = route / "Scenarios" / ("scenario-" + std::to_string(c));
            Write(scenario / "ScenarioProperties.xml", Properties("cScenarioProperties", "Scenario"));
            Write(scenario / "Scenario.bin", "x");
            Write(scenario / "Scenario.bin.MD5", "x");
            files += 2;
        }
    }
    ferrolund::assets::ContentList list;
    const auto start = Clock::now();
    list.addToList(s.ctx, ferrolund::assets::ContentList::StartFolder(s.ctx));
    const double seconds = Seconds(start);
    std::printf("Add to List: %zu files listed (of %zu rows expected) in %.3f s, %.0f files/s, %ld event pumps\n",
                list.rows.size(), files, seconds, list.rows.size() / seconds, s.ui.pumps);
    const auto saveStart = Clock::now();
    list.saveBinGrid(s.ctx);
    std::printf("Save .bin grid: %zu rows in %.3f s\n", list.rows.size(), Seconds(saveStart));
}

FERROLUND_BENCH(content_edit) {
    Scratch s;
    std::string xml =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<cRecordSet xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" "
        "d:version=\"1.0\" d:id=\"1\">\r\n<Record>\r\n";
    for (int i = 0; i < 40000; ++i) {
        xml += "<cEntry d:id=\"" + std::to_string(i + 2) + "\">\r\n<Name d:type=\"cDeltaString\">Item " +
               std::to_string(i % 97) + "</Name>\r\n<Count d:type=\"sInt32\">" + std::to_string(i) +
               "</Count>\r\n</cEntry>\r\n";
    }
    xml += "</Record>\r\n</cRecordSet>\r\n";
    const fs::path source = s.root / "tile.xml";
    Write(source, xml);
    const fs::path tile = s.root / "game/Content/Routes/R/Scenery/+000000+000000.bin";
    Write(tile, "");
    if (ferrolund::tools::SerzConvert(s.ctx, source.string(), tile.string(), ferrolund::tools::SerzDirection::ToBinary)) {
        std::printf("the tile could not be made\n");
        return;
    }
    ferrolund::assets::ContentEditor editor;
    const auto openStart = Clock::now();
    const bool opened = editor.open(s.ctx, tile.string());
    const double openSeconds = Seconds(openStart);
    const auto saveStart = Clock::now();
    const bool saved = opened && editor.save(s.ctx, editor.text);
    const double saveSeconds = Seconds(saveStart);
    std::printf("tile of %.2f MB (%.2f MB as XML): open %.3f s, save with back-up %.3f s%s\n",
                fs::file_size(tile) / 1e6, editor.text.size() / 1e6, openSeconds, saveSeconds,
                saved ? "" : " (the save failed)");
}
