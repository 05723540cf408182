// Time of opening a large scenario for the Scenario Editor: Scenario.bin converted to XML
// in memory, ScenarioProperties.xml read, and the consist and vehicle tables cut out of
// the text. The scenario is the sample's generated one, made with about 30 MB of XML.
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>

#include "app/app_context.h"
#include "bench.h"
#include "bench_ui.h"
#include "generator/make_sample.h"
#include "scenarios/scenario_reader.h"
#include "scenarios/scenario_texts.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr const char* kScenario =
    "\\Content\\Routes\\3f6a2c1e-7b4d-4e8a-9c21-5d0e8b7a4f10\\Scenarios\\c4e8a1b2-9d3f-4a5e-b6c7-d8e9f0a1b2c3";

double Since(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

}  // namespace

FERROLUND_BENCH(scenario_load) {
    using namespace ferrolund;
    const fs::path folder = fs::temp_directory_path() / ("ferrolund-scenario-bench-" + std::to_string(::getpid()));
    std::error_code error;
    fs::remove_all(folder, error);
    sample::SampleOptions options;
    options.scenarioMegabytes = 30;
    options.tiles = options.assets = options.stock = 0;
    sample::SampleResult made;
    if (auto failure = sample::MakeSample(folder, options, made)) {
        std::printf("scenario_load: the sample could not be made: %s\n", failure->c_str());
        return;
    }
    bench::BenchUi ui;
    app::AppContext ctx;
    ctx.prefs.gameRoot = folder.string();
    ctx.appRoot = folder.string();
    ctx.ui = &ui;
    const std::string scenarioFolder = ctx.gameRoot() + kScenario;

    double bestConvert = 1e30, bestTables = 1e30, bestTotal = 1e30;
    std::size_t xmlBytes = 0, consists = 0, vehicles = 0;
    for (int run = 0; run < 5; ++run) {
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
    std::printf("scenario_load  %.1f MB of XML, %zu consists, %zu vehicles\n", static_cast<double>(xmlBytes) / 1e6,
                consists, vehicles);
    std::printf("  convert (Scenario.bin to XML, both files read)  %8.3f s\n", bestConvert);
    std::printf("  tables (properties, consists, vehicles)         %8.3f s   %6.1f MB/s\n", bestTables,
                static_cast<double>(xmlBytes) / 1e6 / bestTables);
    std::printf("  load in all (best of 5)                         %8.3f s\n", bestTotal);
    fs::remove_all(folder, error);
}
