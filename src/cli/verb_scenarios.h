#pragma once
// ferrolund-cli scenarios ROUTE
// ferrolund-cli scenario-clean ROUTE SCENARIO
// ferrolund-cli scenario-revert ROUTE [SCENARIO]

#include <iosfwd>
#include <string>
#include <vector>

#include "app/app_context.h"

namespace ferrolund::cli {

int ScenariosVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out, std::ostream& err);
int ScenarioCleanVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out,
                      std::ostream& err);
int ScenarioRevertVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out,
                       std::ostream& err);

}  // namespace ferrolund::cli
