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
#include "bench_scenario.h"
#include "bench_ui.h"
#include "generator/make_sample.h"
#include "scenarios/scenario_save.h"
#include "scenarios/scenario_texts.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

double Seconds(Clock::time_point since) { return std::chrono::duration<double>(Clock::now() - since).count(); }

}  // namespace

FERROLUND_BENCH(scenario_save) {
    using namespace ferrolund;
    const bench::ScenarioInstallation installation("scenario-save", 30);
    if (!installation.made()) return;
    bench::BenchUi ui;
    app::AppContext ctx;
    installation.bind(ctx, &ui);
    const std::string folder = installation.scenarioFolder();
    scenarios::ScenarioTexts texts;
    if (auto failed = scenarios::LoadScenarioTexts(ctx, folder, texts)) {
        std::printf("scenario_save: %s\n", failed->description.c_str());
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
}
