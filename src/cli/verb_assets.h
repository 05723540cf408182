#pragma once
// ferrolund-cli index-assets [FOLDER] [--rolling-stock] [--exclude-preload] [--default-folders]
//                            [--category C] [--zero-length] [--quick-drive] [--out FILE]

#include <iosfwd>
#include <string>
#include <vector>

#include "app/app_context.h"

namespace ferrolund::cli {

int IndexAssetsVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace ferrolund::cli
