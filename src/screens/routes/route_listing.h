#pragma once
// "Print list of all Routes and Scenarios": every route of the index with its scenarios,
// sorted by name, each with its folder and the word of its class.

#include <string>

#include "routes/route_index.h"

namespace ferrolund::screens {

// The report's text, lines ended by CR LF, the total at the end.
std::string PrintedRouteList(const std::string& gameRoot, const routes::RouteIndex& index);

}  // namespace ferrolund::screens
