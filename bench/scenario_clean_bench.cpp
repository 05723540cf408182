// "Remove Empty Consists" on a generated scenario of about 30 MB of XML: 1,500 consists
// of eight vehicles, every third one emptied (and the last one, found through its closing
// tag). Timed: the one-pass cut of the text alone, the same cut done as one splice of the
// whole text per consist for comparison, and the whole command on Scenario.bin
// (conversion, cut, compile to a scratch file, read back, back-up and replacement).
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>

#include "app/app_context.h"
#include "bench.h"
#include "bench_ui.h"
#include "scenarios/scenario_management.h"
#include "tools/files.h"
#include "tools/serz_convert.h"
#include "tools/text_search.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

double Seconds(Clock::time_point since) { return std::chrono::duration<double>(Clock::now() - since).count(); }

std::string Vehicle(int id) {
    std::string v = "\t\t\t\t<cOwnedEntity d:id=\"" + std::to_string(id) + "\">\r\n\t\t\t\t\t<Component>\r\n";
    for (int f = 0; f < 40; ++f)
        v += "\t\t\t\t\t\t<Value" + std::to_string(f) + " d:type=\"sFloat32\" d:alt_encoding=\"000000202F456240\" "
             "d:precision=\"string\">146.162</Value" + std::to_string(f) + ">\r\n";
    v += "\t\t\t\t\t\t<UniqueNumber d:type=\"cDeltaString\">22003260" + std::to_string(id) +
         "</UniqueNumber>\r\n\t\t\t\t\t</Component>\r\n\t\t\t\t\t<Name d:type=\"cDeltaString\">Coach " +
         std::to_string(id) + "</Name>\r\n\t\t\t\t</cOwnedEntity>\r\n";
    return v;
}

std::string LargeScenario(int consists, int& empty) {
    std::string xml = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<cRecordSet xmlns:d=\"http://www.kuju.com/TnT/"
                      "2003/Delta\" d:version=\"1.0\" d:id=\"1\">\r\n\t<Record>\r\n";
    int id = 100;
    empty = 0;
    for (int c = 0; c < consists; ++c) {
        const bool isEmpty = c % 3 == 2 || c == consists - 1;
        empty += isEmpty ? 1 : 0;
        xml += "\t\t<cConsist d:id=\"" + std::to_string(id++) + "\">\r\n\t\t\t<RailVehicles>\r\n";
        if (!isEmpty)
            for (int v = 0; v < 8; ++v) xml += Vehicle(id++);
        xml += "\t\t\t</RailVehicles>\r\n\t\t\t<ServiceName d:type=\"cDeltaString\">Service " + std::to_string(c) +
               "</ServiceName>\r\n\t\t</cConsist>\r\n";
    }
    return xml + "\t</Record>\r\n</cRecordSet>\r\n";
}

// The same cut made the slow way: each empty consist spliced out of the whole text.
int SpliceEachConsist(std::string text) {
    using ferrolund::tools::InStr;
    int removed = 0;
    long pos = 1;
    for (long a = InStr(pos, text, "<cConsist"); a > 0; a = InStr(pos, text, "<cConsist")) {
        long b = InStr(a + 10, text, "<cConsist");
        if (b == 0) b = std::min<long>(InStr(a + 10, text, "</cConsist") + 12, static_cast<long>(text.size()) + 1);
        if (InStr(std::string_view(text).substr(a - 1, b - a), "<cOwnedEntity") > 0) {
            pos = b;
        } else {
            text = text.substr(0, a - 1) + text.substr(b - 1);
            pos = a;
            ++removed;
        }
    }
    return removed;
}

}  // namespace

FERROLUND_BENCH(scenario_clean) {
    using namespace ferrolund;
    const fs::path root = fs::temp_directory_path() / ("ferrolund-scenario-bench-" + std::to_string(::getpid()));
    fs::create_directories(root / "app");
    bench::BenchUi ui;
    app::AppContext ctx;
    ctx.appRoot = (root / "app").string();
    ctx.prefs.gameRoot = (root / "game").string();
    ctx.ui = &ui;

    int empty = 0;
    const std::string xml = LargeScenario(1500, empty);
    std::printf("scenario XML: %.1f MB, 1500 consists, %d empty\n", xml.size() / 1e6, empty);

    auto start = Clock::now();
    const scenarios::ConsistCut cut = scenarios::CutEmptyConsists(xml);
    std::printf("one-pass cut of the text: %.3f s (%d removed)\n", Seconds(start), cut.removed);
    start = Clock::now();
    const int spliced = SpliceEachConsist(xml);
    std::printf("one splice of the whole text per consist: %.3f s (%d removed)\n", Seconds(start), spliced);

    const fs::path folder = root / "game/Content/Routes/R/Scenarios/S";
    fs::create_directories(folder);
    const std::string source = (root / "source.xml").string();
    tools::WriteTextFile(ctx, source, xml);
    start = Clock::now();
    if (tools::SerzConvert(ctx, source, (folder / "Scenario.bin").string(), tools::SerzDirection::ToBinary)) {
        std::printf("the scenario could not be compiled\n");
    } else {
        std::printf("Scenario.bin: %.1f MB, compiled in %.3f s\n",
                    tools::FileLength((folder / "Scenario.bin").string()) / 1e6, Seconds(start));
        start = Clock::now();
        const scenarios::CleanOutcome outcome = scenarios::RemoveEmptyConsists(ctx, folder.string());
        std::printf("Remove Empty Consists, whole command: %.3f s (%d removed%s)\n", Seconds(start), outcome.removed,
                    outcome.error ? ", FAILED" : "");
    }
    std::error_code ec;
    fs::remove_all(root, ec);
}
