#pragma once
// The program's own templates for rolling stock, Templates\<name> under AppRoot: text
// spliced into a blueprint's XML (or written as a script) with its six-fold markers
// ("aaaaaa", "111111", "HeadLamp", ...) filled in.

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/app_context.h"

namespace ferrolund::assets {

// AppRoot\Templates\<name>.
std::string StockTemplateFile(const app::AppContext& ctx, std::string_view name);
// The template's text as the file holds it; empty when it is missing.
std::string StockTemplate(const app::AppContext& ctx, std::string_view name);
// The same, after telling the person which file is missing or empty when it is.
std::string ReadStockTemplate(app::AppContext& ctx, std::string_view name);
// What the person is told when a template needed is missing or empty.
std::string MissingTemplateMessage(std::string_view name);

// The text with every occurrence of each marker replaced, markers found without regard to
// case and taken in the order given. A value is not searched again for its own marker;
// later markers are looked for in it as in the rest of the text.
using Markers = std::vector<std::pair<std::string_view, std::string>>;
std::string FillMarkers(std::string text, const Markers& markers);

// Gives each of the id markers "dddddd" to "gggggg" that the text holds a fresh id of its
// own, so that the entities a template adds never share an id.
void FillNewIds(std::string& text);

// The text without the line ends at its end, for a template put between two lines.
std::string_view WithoutLastLineEnd(std::string_view text);

}  // namespace ferrolund::assets
