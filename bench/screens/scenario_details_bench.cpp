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
#include "../bench_scenario.h"
#include "screen_bench.h"
#include "screens/scenarios/frmScenario.h"

namespace {

namespace fs = std::filesystem;

}  // namespace

int ScenarioDetailsBench(int megabytes) {
    using namespace ferrolund;
    if (megabytes <= 0) megabytes = 30;
    const bench::ScenarioInstallation installation("scenario-details", megabytes);
    if (!installation.made()) return 1;
    app::AppContext ctx;
    installation.bind(ctx, nullptr);
    scenarios::ScenarioTexts texts;
    if (auto failed = scenarios::LoadScenarioTexts(ctx, installation.scenarioFolder(), texts)) {
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
    return 0;
}
