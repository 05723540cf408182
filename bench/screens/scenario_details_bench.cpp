// The Scenario Details screen on the sample's generated scenario: how long the screen takes
// to fill its fields, services and report grid (loose consists included) and show.
#include <QApplication>
#include <QElapsedTimer>
#include <QTableWidget>

#include <cstdio>
#include <filesystem>
#include <string>

#include "app/app_context.h"
#include "generator/make_sample.h"
#include "scenarios/scenario_texts.h"
#include "screen_bench.h"
#include "screens/scenarios/frmScenario.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kScenario =
    "\\Content\\Routes\\3f6a2c1e-7b4d-4e8a-9c21-5d0e8b7a4f10\\Scenarios\\c4e8a1b2-9d3f-4a5e-b6c7-d8e9f0a1b2c3";

}  // namespace

int ScenarioDetailsBench(int megabytes) {
    using namespace ferrolund;
    if (megabytes <= 0) megabytes = 30;
    const fs::path root = fs::temp_directory_path() / "ferrolund-scenario-details-bench";
    std::error_code error;
    fs::remove_all(root, error);
    sample::SampleOptions options;
    options.scenarioMegabytes = megabytes;
    options.tiles = options.assets = options.stock = 0;
    sample::SampleResult made;
    if (auto failure = sample::MakeSample(root, options, made)) {
        std::fprintf(stderr, "the sample could not be made: %s\n", failure->c_str());
        return 1;
    }
    app::AppContext ctx;
    ctx.prefs.gameRoot = root.string();
    ctx.appRoot = root.string();
    scenarios::ScenarioTexts texts;
    if (auto failed = scenarios::LoadScenarioTexts(ctx, ctx.gameRoot() + kScenario, texts)) {
        std::fprintf(stderr, "%s\n", failed->description.c_str());
        return 1;
    }
    const double xmlMegabytes = static_cast<double>(texts.scenarioXml.size()) / 1e6;
    scenarios::ReportOptions report;
    report.includeLoose = true;
    QElapsedTimer clock;
    clock.start();
    screens::frmScenario screen(ctx, std::move(texts), report);
    const double filled = clock.nsecsElapsed() / 1e9;
    screen.show();
    QApplication::processEvents();
    const double shown = clock.nsecsElapsed() / 1e9;
    std::printf("Scenario Details  %.1f MB of XML, %d grid rows\n", xmlMegabytes, screen.grid()->rowCount());
    std::printf("  screen filled  %8.3f s\n  and shown      %8.3f s\n", filled, shown);
    fs::remove_all(root, error);
    return 0;
}
