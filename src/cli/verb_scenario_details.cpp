#include "cli/verb_scenario_details.h"

#include <ostream>

#include "cli/route_argument.h"
#include "scenarios/scenario_report.h"
#include "scenarios/scenario_texts.h"
#include "scenarios/work_order.h"
#include "tools/names.h"
#include "tools/text_repair.h"

namespace ferrolund::cli {

namespace {

std::string Shown(const std::string& text) { return tools::ShownText(tools::FixEntitiesCopy(text)); }

}  // namespace

int ScenarioDetailsVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out,
                        std::ostream& err) {
    std::vector<std::string> given;
    bool workOrder = false, loose = false;
    for (const std::string& arg : args) {
        if (arg == "--work-order") {
            workOrder = true;
        } else if (arg == "--loose") {
            loose = true;
        } else if (arg.rfind("--", 0) != 0 && given.size() < 2) {
            given.push_back(arg);
        } else {
            err << "ferrolund-cli: scenario-details ROUTE SCENARIO [--work-order] [--loose]\n";
            return 2;
        }
    }
    if (given.size() != 2) {
        err << "ferrolund-cli: scenario-details needs a route and a scenario (folders or names)\n";
        return 2;
    }
    routes::CheckedRoute route;
    if (!FindRoute(ctx, given[0], route)) {
        err << "ferrolund-cli: no route \"" << tools::ShownText(given[0]) << "\" under "
            << tools::ShownText(ctx.gameRoot()) << "\\Content\\Routes nor in the route index\n";
        return 1;
    }
    const std::string scenario = FindScenario(ctx, route.folder, given[1]);
    if (scenario.empty()) {
        err << "ferrolund-cli: the route has no scenario \"" << tools::ShownText(given[1]) << "\"\n";
        return 1;
    }
    const std::string language = ctx.languageTag();
    if (workOrder) {
        std::vector<std::string> lines;
        if (base::Status failed = scenarios::LoadWorkOrder(ctx, route.folder, scenario, lines)) {
            err << "ferrolund-cli: " << tools::ShownText(failed->description) << "\n";
            return 1;
        }
        for (const std::string& line : lines) out << Shown(line) << "\n";
        return 0;
    }
    scenarios::ScenarioTexts texts;
    if (base::Status failed =
            scenarios::LoadScenarioTexts(ctx, scenarios::ScenarioFolderPath(ctx, route.folder, scenario), texts)) {
        err << "ferrolund-cli: " << tools::ShownText(failed->description) << "\n";
        return 1;
    }
    scenarios::ReportOptions options;
    options.includeLoose = loose;
    options.languageTag = language;
    // The origins are named from the route's marker index, made first when the user agrees;
    // without it they are tiles.
    scenarios::MarkerIndex markers;
    bool cancelled = false;
    if (base::Status failed = scenarios::LoadMarkerIndex(ctx, route.folder, markers, cancelled)) {
        err << "ferrolund-cli: no track marker index, the origins are tiles: " << tools::ShownText(failed->description)
            << "\n";
    } else if (!cancelled) {
        options.markers = scenarios::LookupIn(std::move(markers));
    }
    const auto report = scenarios::ScenarioReport(texts.scenarioXml, options);
    for (const auto& row : scenarios::ReportRows(report)) {
        if (row[0].empty()) {
            out << "\n";
        } else {
            out << Shown(row[0]) << "\t" << Shown(row[1]) << "\n";
        }
    }
    return 0;
}

}  // namespace ferrolund::cli
