#include "cli/verb_scenarios.h"

#include <ostream>

#include "cli/route_argument.h"
#include "cli/shared_options.h"
#include "routes/scenario_list.h"
#include "scenarios/scenario_management.h"
#include "scenarios/scenario_texts.h"
#include "tools/names.h"

namespace ferrolund::cli {

namespace {

std::string Shown(const std::string& text) { return tools::ShownText(text); }

// The route and, when `scenarioWanted`, the scenario folder named by the arguments.
// Gives an exit code other than kExitDone when they do not name one.
int FindTarget(app::AppContext& ctx, const std::vector<std::string>& args, const char* usage, std::size_t least,
               std::size_t most, routes::CheckedRoute& route, std::string& scenario, std::ostream& err) {
    if (args.size() < least || args.size() > most) {
        err << "ferrolund-cli: usage: " << usage << "\n";
        return kExitUsage;
    }
    if (!FindRoute(ctx, args[0], route)) {
        err << "ferrolund-cli: no route \"" << Shown(args[0]) << "\" under " << Shown(ctx.gameRoot())
            << "\\Content\\Routes nor in the route index\n";
        return kExitFailed;
    }
    if (args.size() < 2) return kExitDone;
    scenario = FindScenario(ctx, route.folder, args[1]);
    if (scenario.empty()) {
        err << "ferrolund-cli: the route \"" << Shown(route.name) << "\" has no scenario \"" << Shown(args[1]) << "\"\n";
        return kExitFailed;
    }
    return kExitDone;
}

}  // namespace

int ScenariosVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    routes::CheckedRoute route;
    std::string unused;
    if (int code = FindTarget(ctx, args, "scenarios ROUTE", 1, 1, route, unused, err)) return code;
    const routes::ScenarioListing listing = routes::ListScenarios(ctx.gameRoot(), route.folder, ctx.languageTag());
    if (listing.rows.empty()) {
        out << listing.note << "\n";
        return kExitDone;
    }
    for (const routes::ScenarioRow& row : listing.rows) {
        const routes::ScenarioLegend* legend = routes::LegendOf(row.kind);
        out << Shown(row.folder) << "\t" << (legend ? legend->word : "Other") << "\t" << Shown(row.name) << "\n";
    }
    out << listing.rows.size() << " scenarios\n";
    return kExitDone;
}

int ScenarioCleanVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out,
                      std::ostream& err) {
    routes::CheckedRoute route;
    std::string scenario;
    if (int code = FindTarget(ctx, args, "scenario-clean ROUTE SCENARIO", 2, 2, route, scenario, err)) return code;
    const scenarios::CleanOutcome outcome =
        scenarios::RemoveEmptyConsists(ctx, scenarios::ScenarioFolderPath(ctx, route.folder, scenario));
    if (outcome.error) {
        err << "ferrolund-cli: " << Shown(outcome.error->description) << "\n";
        return kExitFailed;
    }
    out << outcome.removed << " empty consists removed\n";
    if (!outcome.backup.empty()) out << "the old file is " << Shown(outcome.backup) << "\n";
    return kExitDone;
}

int ScenarioRevertVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out,
                       std::ostream& err) {
    routes::CheckedRoute route;
    std::string scenario;
    if (int code = FindTarget(ctx, args, "scenario-revert ROUTE [SCENARIO]", 1, 2, route, scenario, err)) return code;
    const scenarios::RevertOutcome outcome =
        scenario.empty() ? scenarios::RevertRoute(ctx, route.folder)
                         : scenarios::RevertScenario(scenarios::ScenarioFolderPath(ctx, route.folder, scenario));
    out << outcome.reverted << " scenarios reverted, " << outcome.backupsDeleted << " numbered back-ups deleted\n";
    if (outcome.error) {
        err << "ferrolund-cli: " << Shown(outcome.error->description) << "\n";
        return kExitFailed;
    }
    return kExitDone;
}

}  // namespace ferrolund::cli
