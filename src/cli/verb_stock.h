#pragma once
// ferrolund-cli stock-transform COMMAND FILE... [--mass M] [--capacity C]
// The asset list's rolling-stock edits over blueprints named on the line.

#include <iosfwd>
#include <string>
#include <vector>

#include "app/app_context.h"

namespace ferrolund::cli {

int StockTransformVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace ferrolund::cli
