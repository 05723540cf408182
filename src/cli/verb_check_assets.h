#pragma once
// ferrolund-cli check-assets (--index FILE | FOLDER) [--csv DIR] [--show]

#include <iosfwd>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "assets/asset_row.h"

namespace ferrolund::cli {

// The rows of an index file (the asset index's form), heading rows left out; each line
// the loader could not take is told on `err`.
std::vector<assets::AssetRow> ReadIndexRows(const std::string& file, std::ostream& err);

int CheckAssetsVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace ferrolund::cli
