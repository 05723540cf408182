#pragma once
// The program's own template files (AppRoot\Templates) that the rolling-stock transforms
// splice into a blueprint. A template is text with markers, six-fold letters or digits,
// each replaced wherever it stands.

#include <string>
#include <string_view>

#include "app/app_context.h"

namespace ferrolund::assets {

// AppRoot\Templates\<name>.
std::string TemplatePath(const app::AppContext& ctx, std::string_view name);

// The template's text; empty when the file is missing or empty.
std::string ReadTemplate(const app::AppContext& ctx, std::string_view name);

// Replaces every `marker` in `text` by `value`, the marker found without regard to case.
void FillMarker(std::string& text, std::string_view marker, std::string_view value);

// Gives each of the id markers "dddddd" to "gggggg" that the template holds a fresh
// nine-digit id of its own, so that the entities it adds never share an id.
void FillNewIds(std::string& text);

// The report line of a template that is not there.
std::string MissingTemplateMessage(const app::AppContext& ctx, std::string_view name);

}  // namespace ferrolund::assets
