#pragma once
// ferrolund-cli check-assets (--index FILE | FOLDER) [--csv DIR] [--show]

#include <iosfwd>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "assets/asset_row.h"

namespace ferrolund::cli {

int CheckAssetsVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace ferrolund::cli
