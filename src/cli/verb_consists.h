#pragma once
// ferrolund-cli consist-templates [--missing]

#include <iosfwd>
#include <string>
#include <vector>

#include "app/app_context.h"

namespace ferrolund::cli {

int ConsistTemplatesVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out,
                         std::ostream& err);

}  // namespace ferrolund::cli
