// Time of opening a large scenario for the Scenario Editor: Scenario.bin converted to XML
// in memory, ScenarioProperties.xml read, and the consist and vehicle tables cut out of
// the text. The scenario is the sample's generated one: scenario_load makes it with about
// 30 MB of XML, scenario_load_large with a Scenario.bin of about 30 MB (the binary form is
// some eight times smaller than its XML).
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>

#include "app/app_context.h"
#include "bench.h"
#include "bench_scenario.h"
#include "bench_ui.h"
#include "generator/make_sample.h"
#include "scenarios/scenario_reader.h"
#include "scenarios/scenario_texts.h"
#include "tools/host_path.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

double Since(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

void Run(int megabytes, int runs) {
    using namespace ferrolund;
    const bench::ScenarioInstallation installation("scenario-load", megabytes);
    if (!installation.made()) return;
    bench::BenchUi ui;
    app::AppContext ctx;
    installation.bind(ctx, &ui);
    const std::string scenarioFolder = installation.scenarioFolder();

    double bestConvert = 1e30, bestTables = 1e30, bestTotal = 1e30;
    std::size_t xmlBytes = 0, consists = 0, vehicles = 0;
    for (int run = 0; run < runs; ++run) {
        const auto start = Clock::now();
        scenarios::ScenarioTexts texts;
        if (auto failed = scenarios::LoadScenarioTexts(ctx, scenarioFolder, texts)) {
            std::printf("scenario_load: %s\n", failed->description.c_str());
            break;
        }
        const double convert = Since(start);
        const auto tablesStart = Clock::now();
        const scenarios::ScenarioDetails details = scenarios::ReadScenarioDetails(texts.propertiesXml, "English");
        const scenarios::ScenarioConsists read = scenarios::ReadConsists(texts.scenarioXml, "English");
        const double tables = Since(tablesStart);
        bestConvert = std::min(bestConvert, convert);
        bestTables = std::min(bestTables, tables);
        bestTotal = std::min(bestTotal, Since(start));
        xmlBytes = texts.scenarioXml.size();
        consists = read.consists.size();
        vehicles = 0;
        for (const auto& row : read.consists) vehicles += row.vehicles.size();
        if (details.displayName.empty()) std::printf("scenario_load: the properties gave no name\n");
    }
    std::error_code sizeError;
    const auto binaryBytes = fs::file_size(tools::HostPath(scenarioFolder + "\\Scenario.bin"), sizeError);
    std::printf("scenario %.1f MB of XML (Scenario.bin %.1f MB), %zu consists, %zu vehicles\n",
                static_cast<double>(xmlBytes) / 1e6, static_cast<double>(binaryBytes) / 1e6, consists, vehicles);
    std::printf("  convert (Scenario.bin to XML, both files read)  %8.3f s\n", bestConvert);
    std::printf("  tables (properties, consists, vehicles)         %8.3f s   %6.1f MB/s\n", bestTables,
                static_cast<double>(xmlBytes) / 1e6 / bestTables);
    std::printf("  load in all (best of %d)                         %8.3f s\n", runs, bestTotal);
}

}  // namespace

FERROLUND_BENCH(scenario_load) {
    Run(30, 5);
}

FERROLUND_BENCH(scenario_load_large) {
    Run(240, 2);
}
