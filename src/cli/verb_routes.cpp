#include "cli/verb_routes.h"

#include <filesystem>
#include <ostream>

#include "cli/route_argument.h"
#include "routes/route_check_command.h"
#include "routes/route_indexer.h"
#include "tools/names.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"

namespace ferrolund::cli {

namespace {

std::string Shown(const std::string& text) { return tools::ShownText(text); }

// The folders of the route's scenarios, as the scenario grid would list them.
std::vector<std::string> ScenarioFolders(const app::AppContext& ctx, const std::string& routeFolder) {
    std::vector<std::string> folders;
    std::error_code ec;
    const auto scenarios = tools::HostPath(ctx.gameRoot() + "\\Content\\Routes\\" + routeFolder + "\\Scenarios");
    for (std::filesystem::directory_iterator it(scenarios, ec), end; !ec && it != end; it.increment(ec))
        if (it->is_directory(ec)) folders.push_back(tools::SystemPath(it->path().filename()));
    return folders;
}

}  // namespace

int IndexRoutesVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    if (!args.empty()) {
        err << "ferrolund-cli: index-routes takes no arguments\n";
        return 2;
    }
    routes::IndexRouteProperties(ctx);
    for (int i = 0; i < ctx.routeIndex.count(); ++i)
        if (!ctx.routeIndex.routeFolder[i].empty())
            out << Shown(ctx.routeIndex.routeName[i]) << "\t" << Shown(ctx.routeIndex.routeFolder[i]) << "\n";
    return 0;
}

int CheckRouteVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    std::string given, csvFolder;
    bool textures = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--textures") {
            textures = true;
        } else if (args[i] == "--csv" && i + 1 < args.size()) {
            csvFolder = args[++i];
        } else if (given.empty() && args[i].rfind("--", 0) != 0) {
            given = args[i];
        } else {
            err << "ferrolund-cli: check-route ROUTE [--textures] [--csv DIR]\n";
            return 2;
        }
    }
    if (given.empty()) {
        err << "ferrolund-cli: check-route needs a route (its folder or its name)\n";
        return 2;
    }
    routes::CheckedRoute route;
    if (!FindRoute(ctx, given, route)) {
        err << "ferrolund-cli: no route \"" << Shown(given) << "\" under " << Shown(ctx.gameRoot())
            << "\\Content\\Routes nor in the route index\n";
        return 1;
    }
    route.scenarioFolders = ScenarioFolders(ctx, route.folder);
    routes::CheckAnswers answers;
    answers.listShapes = !csvFolder.empty();
    answers.checkTextures = textures;
    answers.listTextures = !csvFolder.empty();
    answers.listAudio = !csvFolder.empty();
    const routes::RouteCheckOutcome outcome = routes::CheckSelectedRoute(ctx, route, answers);
    if (outcome.unpacked || outcome.stopped) return outcome.unpacked ? 0 : 1;

    const std::string assets = ctx.gameRoot() + "\\";
    for (const auto& row : outcome.run.missingRows) {
        const std::string path = row[0].rfind(assets, 0) == 0 ? row[0].substr(assets.size()) : row[0];
        out << Shown(path) << "\t" << Shown(row[1]) << "\n";
    }
    if (textures && !outcome.missingText.empty()) out << Shown(outcome.missingText) << "\n";
    out << outcome.run.tilesRead << " tiles read, " << outcome.uniqueAssets.size() << " assets used, "
        << outcome.run.missingRows.size() << " missing references\n";
    if (!csvFolder.empty()) {
        for (const routes::ReportListing& listing : outcome.lists) {
            const std::string saved = routes::SaveListing(ctx, route.name, listing);
            if (saved.empty()) continue;
            const std::string target = csvFolder + "/" + tools::SystemPath(tools::HostPath(saved).filename());
            if (const base::Status failed = tools::CopyFileReplacing(saved, target)) {
                err << "ferrolund-cli: " << Shown(failed->description) << "\n";
                return 1;
            }
            out << "saved " << Shown(target) << "\n";
        }
    }
    return outcome.run.missingRows.empty() ? 0 : 3;
}

}  // namespace ferrolund::cli
