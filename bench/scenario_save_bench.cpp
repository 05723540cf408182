// The Scenario Editor on a generated scenario of about 30 MB of XML (600 consists of 12
// vehicles): the start time shift of all consists on Tab or Enter, and the whole save:
// compile to the scratch folder, read back and compare, back up and replace both files.
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "app/app_context.h"
#include "bench.h"
#include "bench_ui.h"
#include "scenarios/scenario_save.h"
#include "tools/serz_convert.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

double Seconds(Clock::time_point since) { return std::chrono::duration<double>(Clock::now() - since).count(); }

std::string Vehicle(int consist, int vehicle) {
    const int base = 100000000 + (consist * 100 + vehicle) * 30;
    const std::string id = std::to_string(base);
    std::string v =
        "\t\t\t\t<cOwnedEntity d:id=\"" + id + "\">\n"
        "\t\t\t\t\t<Component>\n\t\t\t\t\t\t<cWagon d:id=\"" + std::to_string(base + 1) + "\">\n"
        "\t\t\t\t\t\t\t<Flipped d:type=\"bool\">0</Flipped>\n"
        "\t\t\t\t\t\t\t<UniqueNumber d:type=\"cDeltaString\">" + std::to_string(37000 + vehicle) + "</UniqueNumber>\n"
        "\t\t\t\t\t\t\t<Followers>\n";
    for (int f = 0; f < 8; ++f) {
        v += "\t\t\t\t\t\t\t\t<Network-cTrackFollower d:id=\"" + std::to_string(base + 2 + f) + "\">\n"
             "\t\t\t\t\t\t\t\t\t<Height d:type=\"sFloat32\" d:precision=\"string\">31.1058</Height>\n"
             "\t\t\t\t\t\t\t\t\t<_type d:type=\"cDeltaString\">NoTrigger</_type>\n"
             "\t\t\t\t\t\t\t\t\t<Position d:type=\"sFloat32\" d:precision=\"string\">" + std::to_string(100 + f) +
             ".5</Position>\n"
             "\t\t\t\t\t\t\t\t\t<DevString d:type=\"cDeltaString\">694846ab-c174-44ef-9a03-ee636219b692</DevString>\n"
             "\t\t\t\t\t\t\t\t</Network-cTrackFollower>\n";
    }
    v += "\t\t\t\t\t\t\t</Followers>\n\t\t\t\t\t\t</cWagon>\n\t\t\t\t\t</Component>\n"
         "\t\t\t\t\t<Provider d:type=\"cDeltaString\">DTG</Provider>\n"
         "\t\t\t\t\t<Product d:type=\"cDeltaString\">Class 66 Pack</Product>\n"
         "\t\t\t\t\t<BlueprintID d:type=\"cDeltaString\">RailVehicles\\Freight\\HTA\\HTA.xml</BlueprintID>\n"
         "\t\t\t\t</cOwnedEntity>\n";
    return v;
}

std::string Scenario(int consists, int vehicles) {
    std::string xml = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
                      "<cRecordSet xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\" d:id=\"1\">\n"
                      "\t<Record>\n";
    for (int c = 0; c < consists; ++c) {
        xml += "\t\t<cConsist d:id=\"" + std::to_string(200000000 + c) + "\">\n\t\t\t<RailVehicles>\n";
        for (int v = 0; v < vehicles; ++v) xml += Vehicle(c, v);
        xml += "\t\t\t</RailVehicles>\n\t\t\t<Driver>\n\t\t\t\t<cDriver d:id=\"" + std::to_string(300000000 + c) + "\">\n"
               "\t\t\t\t\t<StartTime d:type=\"sFloat32\" d:precision=\"string\">" + std::to_string(30000 + c * 10) +
               "</StartTime>\n\t\t\t\t</cDriver>\n\t\t\t</Driver>\n\t\t</cConsist>\n";
    }
    return xml + "\t</Record>\n</cRecordSet>\n";
}

void Write(const fs::path& path, const std::string& bytes) {
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
}

}  // namespace

FERROLUND_BENCH(scenario_save) {
    const fs::path root = fs::temp_directory_path() / ("ferrolund-bench-scenario-" + std::to_string(::getpid()));
    ferrolund::bench::BenchUi ui;
    ferrolund::app::AppContext ctx;
    ctx.appRoot = (root / "app").string();
    ctx.prefs.gameRoot = (root / "game").string();
    ctx.ui = &ui;
    const fs::path folder = root / "game" / "Content" / "Routes" / "R" / "Scenarios" / "S";
    fs::create_directories(root / "app");
    fs::create_directories(folder);

    // The scenario as the game would hold it: compiled once, then loaded as its XML.
    const std::string generated = Scenario(600, 12);
    Write(root / "made.xml", generated);
    if (const auto failed = ferrolund::tools::SerzConvert(ctx, (root / "made.xml").string(),
                                                          (folder / "Scenario.bin").string(),
                                                          ferrolund::tools::SerzDirection::ToBinary)) {
        std::printf("scenario_save: the generated scenario does not compile: %s\n", failed->description.c_str());
        fs::remove_all(root);
        return;
    }
    Write(folder / "ScenarioProperties.xml", "<cScenarioProperties/>\r\n");
    std::string xml;
    auto start = Clock::now();
    ferrolund::tools::SerzReadXml(ctx, (folder / "Scenario.bin").string(), xml);
    const double load = Seconds(start);
    std::printf("scenario_save: Scenario.xml %.1f MB, Scenario.bin %.1f MB, 600 consists; loaded in %.3f s\n",
                xml.size() / 1e6, fs::file_size(folder / "Scenario.bin") / 1e6, load);

    start = Clock::now();
    const int moved = ferrolund::scenarios::ShiftStartTimes(xml, 1800);
    const double shift = Seconds(start);
    std::printf("  start time shift of all consists: %d moved in %.3f s\n", moved, shift);

    for (int run = 1; run <= 2; ++run) {
        start = Clock::now();
        const ferrolund::scenarios::SaveOutcome out =
            ferrolund::scenarios::SaveScenario(ctx, folder.string(), "<cScenarioProperties/>", xml);
        const double save = Seconds(start);
        std::printf("  save %d (compile, read back, compare, back up, replace): %.3f s%s%s\n", run, save,
                    out.error ? "  FAILED: " : "", out.error ? out.error->description.c_str() : "");
    }
    std::printf("  bar: each at most 1 s\n");
    fs::remove_all(root);
}
