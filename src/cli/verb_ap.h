#pragma once
// ferrolund-cli list-ap [FOLDER] [--rolling-stock] [--filter MASK] [--rows]

#include <iosfwd>
#include <string>
#include <vector>

#include "app/app_context.h"

namespace ferrolund::cli {

int ListApVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace ferrolund::cli
