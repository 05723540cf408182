#pragma once
// The templates that the rolling-stock transforms splice into blueprints: this program's
// own text files in AppRoot\Templates, each holding markers of six letters or digits
// ("aaaaaa", "111111", "HeadLamp") that are replaced everywhere in its text.

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/app_context.h"

namespace ferrolund::assets {

using MarkerValues = std::vector<std::pair<std::string_view, std::string>>;

// The text with every occurrence of each marker (case ignored) replaced by its value,
// the markers taken in order. A value is not searched again for its own marker; later
// markers are looked for in it as in the rest of the text.
std::string FillMarkers(std::string text, const MarkerValues& markers);

// AppRoot\Templates\<name>.
std::string StockTemplateFile(const app::AppContext& ctx, std::string_view name);
// The whole text of a template; empty, after telling the person which file is missing,
// when it is absent or empty.
std::string ReadStockTemplate(app::AppContext& ctx, std::string_view name);

}  // namespace ferrolund::assets
