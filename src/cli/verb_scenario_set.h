#pragma once
// ferrolund-cli scenario-set ROUTE SCENARIO --field NAME=VALUE... [--shift-consists]

#include <iosfwd>
#include <string>
#include <vector>

#include "app/app_context.h"

namespace ferrolund::cli {

int ScenarioSetVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace ferrolund::cli
