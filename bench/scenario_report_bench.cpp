// Speed of the Scenario Details report, the Timetabled flags and the Work Order on the
// sample's generated scenario of about 30 MB of XML (the text is converted once; the
// figures are for the work on the text).
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
#include "scenarios/scenario_report.h"
#include "scenarios/scenario_texts.h"
#include "scenarios/work_order.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

double Since(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

// The best of five runs of `work`, in seconds.
template <class Work>
double Best(Work&& work) {
    double best = 1e30;
    for (int run = 0; run < 5; ++run) {
        const auto start = Clock::now();
        work();
        best = std::min(best, Since(start));
    }
    return best;
}

}  // namespace

FERROLUND_BENCH(scenario_report) {
    using namespace ferrolund;
    const bench::ScenarioInstallation installation("scenario-report", 30);
    if (!installation.made()) return;
    bench::BenchUi ui;
    app::AppContext ctx;
    installation.bind(ctx, &ui);
    scenarios::ScenarioTexts texts;
    if (auto failed = scenarios::LoadScenarioTexts(ctx, installation.scenarioFolder(), texts)) {
        std::printf("scenario_report: %s\n", failed->description.c_str());
        return;
    }
    const double megabytes = static_cast<double>(texts.scenarioXml.size()) / 1e6;
    scenarios::ReportOptions services, all;
    all.includeLoose = true;
    std::size_t serviceBlocks = 0, allBlocks = 0, lines = 0, flags = 0, sheetLines = 0;
    const double servicesTime = Best([&] { serviceBlocks = scenarios::ScenarioReport(texts.scenarioXml, services).size(); });
    const double allTime = Best([&] {
        const auto report = scenarios::ScenarioReport(texts.scenarioXml, all);
        allBlocks = report.size();
        lines = scenarios::ReportRows(report).size();
    });
    bool on = true;
    const double flagTime = Best([&] {
        flags = static_cast<std::size_t>(scenarios::SetTimetabled(texts.scenarioXml, on));
        on = !on;
    });
    const double sheetTime = Best([&] {
        sheetLines = scenarios::WorkOrderLines("Bench", texts.propertiesXml, texts.scenarioXml).size();
    });
    std::printf("scenario_report  %.1f MB of XML\n", megabytes);
    std::printf("  report, services only   %8.3f s  %6.1f MB/s  %zu consists\n", servicesTime, megabytes / servicesTime,
                serviceBlocks);
    std::printf("  report, loose included  %8.3f s  %6.1f MB/s  %zu consists, %zu grid rows\n", allTime,
                megabytes / allTime, allBlocks, lines);
    std::printf("  Timetabled flags set    %8.3f s  %6.1f MB/s  %zu flags\n", flagTime, megabytes / flagTime, flags);
    std::printf("  Work Order              %8.3f s  %6.1f MB/s  %zu lines\n", sheetTime, megabytes / sheetTime,
                sheetLines);
}
