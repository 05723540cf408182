#pragma once
// ferrolund-cli scenario-details ROUTE SCENARIO [--work-order] [--loose]

#include <iosfwd>
#include <string>
#include <vector>

#include "app/app_context.h"

namespace ferrolund::cli {

int ScenarioDetailsVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out,
                        std::ostream& err);

}  // namespace ferrolund::cli
