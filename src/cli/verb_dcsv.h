#pragma once
// ferrolund-cli dcsv FILE [--png OUT] [--svg OUT] [--size WxH] [--process]

#include <iosfwd>
#include <string>
#include <vector>

#include "app/app_context.h"

namespace ferrolund::cli {

int DcsvVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace ferrolund::cli
