#pragma once
// ferrolund-cli index-routes
// ferrolund-cli check-route ROUTE [--textures] [--csv DIR]

#include <iosfwd>
#include <string>
#include <vector>

#include "app/app_context.h"

namespace ferrolund::cli {

int IndexRoutesVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out, std::ostream& err);
int CheckRouteVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace ferrolund::cli
