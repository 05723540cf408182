#include "cli/route_argument.h"

#include <filesystem>

#include "routes/route_index.h"
#include "routes/route_indexer.h"
#include "routes/scenario_list.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/names.h"

namespace ferrolund::cli {

bool FindRoute(app::AppContext& ctx, const std::string& given, routes::CheckedRoute& route) {
    const std::string folder = ctx.gameRoot() + "\\Content\\Routes\\" + given;
    routes::RouteIndex index;
    if (!routes::LoadRouteIndexFile(ctx, index)) {
        routes::IndexRouteProperties(ctx);
        routes::LoadRouteIndexFile(ctx, index);
    }
    for (int i = 0; i < index.count(); ++i) {
        if (tools::EqualsIgnoreCase(index.routeFolder[i], given) || tools::EqualsIgnoreCase(index.routeName[i], given)) {
            route.name = index.routeName[i];
            route.folder = index.routeFolder[i];
            return true;
        }
    }
    if (!std::filesystem::is_directory(tools::HostPath(folder))) return false;
    route.name = given;
    route.folder = given;
    return true;
}

std::string FindScenario(app::AppContext& ctx, const std::string& routeFolder, const std::string& given) {
    const std::string folder = ctx.gameRoot() + "\\Content\\Routes\\" + routeFolder + "\\Scenarios\\" + given;
    std::error_code error;
    if (!given.empty() && std::filesystem::is_directory(tools::HostPath(folder), error))
        return tools::SystemPath(tools::HostPath(folder).filename());
    const routes::ScenarioListing listing =
        routes::ListScenarios(ctx.gameRoot(), routeFolder, ctx.languageTag());
    for (const routes::ScenarioRow& row : listing.rows) {
        // The name is held as the file's bytes; the command line gives it as UTF-8.
        if (tools::EqualsIgnoreCase(row.name, given) || tools::EqualsIgnoreCase(tools::ShownText(row.name), given) ||
            tools::EqualsIgnoreCase(row.devString, given))
            return row.folder;
    }
    return {};
}

}  // namespace ferrolund::cli
