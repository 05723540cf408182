#pragma once
// The program's own templates for rolling stock, Templates\<name> under AppRoot: text
// spliced into a blueprint's XML (or written as a script) with its six-fold markers
// ("aaaaaa", "bbbbbb", ...) filled in.

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/app_context.h"

namespace ferrolund::assets {

// The template's text as the file holds it; empty when it is missing.
std::string StockTemplate(const app::AppContext& ctx, std::string_view name);

// What the person is told when a template needed is missing or empty.
std::string MissingTemplateMessage(std::string_view name);

// The text with every marker replaced, in the order given, matching case exactly.
using Markers = std::vector<std::pair<std::string_view, std::string>>;
std::string FillMarkers(std::string text, const Markers& markers);

// The text without the line ends at its end, for a template put between two lines.
std::string_view WithoutLastLineEnd(std::string_view text);

}  // namespace ferrolund::assets
