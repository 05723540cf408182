// The Scenario Editor on the sample's generated scenario of about 30 MB of XML: the start
// time shift of all consists on Tab or Enter, and the whole save: compile to the scratch
// folder, read back and compare, back up and replace both files.
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>

#include "app/app_context.h"
#include "bench.h"
#include "bench_ui.h"
#include "generator/make_sample.h"
#include "scenarios/scenario_save.h"
#include "scenarios/scenario_texts.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr const char* kScenario =
    "\\Content\\Routes\\3f6a2c1e-7b4d-4e8a-9c21-5d0e8b7a4f10\\Scenarios\\c4e8a1b2-9d3f-4a5e-b6c7-d8e9f0a1b2c3";

double Seconds(Clock::time_point since) { return std::chrono::duration<double>(Clock::now() - since).count(); }

}  // namespace

FERROLUND_BENCH(scenario_save) {
    using namespace ferrolund;
    const fs::path root = fs::temp_directory_path() / ("ferrolund-bench-scenario-save-" + std::to_string(::getpid()));
    std::error_code error;
    fs::remove_all(root, error);
    sample::SampleOptions options;
    options.scenarioMegabytes = 30;
    options.tiles = options.assets = options.stock = 0;
    sample::SampleResult made;
    if (auto failure = sample::MakeSample(root, options, made)) {
        std::printf("scenario_save: the sample could not be made: %s\n", failure->c_str());
        return;
    }
    bench::BenchUi ui;
    app::AppContext ctx;
    ctx.prefs.gameRoot = root.string();
    ctx.appRoot = (root / "app").string();
    ctx.ui = &ui;
    const std::string folder = ctx.gameRoot() + kScenario;
    scenarios::ScenarioTexts texts;
    if (auto failed = scenarios::LoadScenarioTexts(ctx, folder, texts)) {
        std::printf("scenario_save: %s\n", failed->description.c_str());
        fs::remove_all(root, error);
        return;
    }
    std::printf("scenario_save: Scenario.xml %.1f MB\n", static_cast<double>(texts.scenarioXml.size()) / 1e6);

    auto start = Clock::now();
    const int moved = scenarios::ShiftStartTimes(texts.scenarioXml, 1800);
    std::printf("  start time shift of all consists: %d moved in %.3f s\n", moved, Seconds(start));

    for (int run = 1; run <= 3; ++run) {
        start = Clock::now();
        const scenarios::SaveOutcome out = scenarios::SaveScenario(ctx, folder, texts.propertiesXml, texts.scenarioXml);
        std::printf("  save %d (compile, read back, compare, back up, replace): %.3f s%s%s\n", run, Seconds(start),
                    out.error ? "  FAILED: " : "", out.error ? out.error->description.c_str() : "");
    }
    std::printf("  bar: each at most 1 s\n");
    fs::remove_all(root, error);
}
