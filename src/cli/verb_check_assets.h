#pragma once
// ferrolund-cli check-assets (--index FILE | FOLDER) [--csv DIR] [--show]

#include <iosfwd>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "assets/asset_row.h"

namespace ferrolund::cli {

// The rows of an index file's comma text: the heading line and blank lines passed over;
// a line with fewer than three cells is told on `err` and left out.
std::vector<assets::AssetRow> ReadIndexRows(const std::string& text, const std::string& file, std::ostream& err);

int CheckAssetsVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace ferrolund::cli
