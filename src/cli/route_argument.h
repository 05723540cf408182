#pragma once
// How a command line names a route and a scenario: by folder, or by display name.

#include <string>

#include "app/app_context.h"
#include "routes/route_check_command.h"

namespace ferrolund::cli {

// The route's folder: the name of a folder under Content\Routes, else a display name of
// the index (read from IndexFiles\RouteIndex.csv, built first when it is missing).
bool FindRoute(app::AppContext& ctx, const std::string& given, routes::CheckedRoute& route);

// The folder of one of the route's scenarios: a folder under its Scenarios folder, else a
// scenario whose display name is `given` (without regard to case). Empty when none is.
std::string FindScenario(app::AppContext& ctx, const std::string& routeFolder, const std::string& given);

}  // namespace ferrolund::cli
